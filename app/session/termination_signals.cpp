#include "app/session/termination_signals.hpp"

#include <csignal>
#include <utility>

namespace orvel::session {

namespace {

void survive(int /*signal*/) {}

}  // namespace

TerminationSignals::TerminationSignals(qt::QtRunLoop& runLoop, Task asked)
    : requests_({SIGTERM, SIGINT, SIGHUP}), watch_(requests_.watch(runLoop, std::move(asked))) {
    for (const int signal : {SIGPIPE, SIGTSTP, SIGTTOU}) {
        struct sigaction action {};
        action.sa_handler = survive;
        action.sa_flags = SA_RESTART;
        ::sigaction(signal, &action, nullptr);
    }
}

}  // namespace orvel::session
