#include "app/session/panel_session.hpp"

#include "app/application.hpp"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace orvel::session {

namespace {

constexpr int kPanelSignal = SIGUSR1;

/// A signal handler is given no context. The ends of a pipe that gets a byte for each request.
std::atomic<int> requestEnd{-1};     // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<int> requestSource{-1};  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void noteRequest(int /*signal*/) {
    const int error = errno;
    const char byte = '!';
    static_cast<void>(::write(requestEnd.load(), &byte, 1) == 1);
    errno = error;
}

}  // namespace

PanelSession::PanelSession(qt::QtRunLoop& runLoop, x11::X11Shell& shell, Application& application)
    : content_(shell.panels(), application.settings(), application.onboarding(),
               application.engine().isPaused(),
               [&panel = application.settingsPanel()] { panel.hide(); }) {
    keepPanelRequests();
    const int requests = requestSource;
    if (requests < 0) return;
    requests_ = runLoop.watchReadable(requests, [requests, &panel = application.settingsPanel()] {
        std::array<char, 16> bytes{};
        if (::read(requests, bytes.data(), bytes.size()) > 0) panel.show();
    });
}

void keepPanelRequests() {
    std::array<int, 2> ends{-1, -1};
    if (requestSource >= 0 || ::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    requestSource = ends[0];
    requestEnd = ends[1];
    struct sigaction action {};
    action.sa_handler = noteRequest;
    action.sa_flags = SA_RESTART;
    ::sigaction(kPanelSignal, &action, nullptr);
}

PanelSession::~PanelSession() { std::signal(kPanelSignal, SIG_IGN); }

bool requestPanel(int process) { return process > 0 && ::kill(process, kPanelSignal) == 0; }

}  // namespace orvel::session
