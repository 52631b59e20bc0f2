#include "app/session/termination_signals.hpp"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace orvel::session {

namespace {

/// A signal handler is given no context.
std::atomic<int> writeEnd{-1};  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void noteSignal(int /*signal*/) {
    const int error = errno;
    const char byte = '!';
    static_cast<void>(::write(writeEnd.load(), &byte, 1) == 1);
    errno = error;
}

void survive(int /*signal*/) {}

void install(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(qt::QtRunLoop& runLoop, Task asked)
    : asked_(std::move(asked)) {
    if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0) return;
    writeEnd = pipe_[1];
    watch_ = runLoop.watchReadable(pipe_[0], [this] {
        char bytes[16];
        if (::read(pipe_[0], bytes, sizeof bytes) > 0) asked_();
    });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) install(signal, noteSignal);
    for (const int signal : {SIGPIPE, SIGTSTP, SIGTTOU}) install(signal, survive);
}

TerminationSignals::~TerminationSignals() {
    watch_.reset();
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) install(signal, SIG_IGN);
    writeEnd = -1;
    for (const int end : pipe_) {
        if (end >= 0) ::close(end);
    }
}

}  // namespace orvel::session
