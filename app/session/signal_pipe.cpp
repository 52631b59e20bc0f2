#include "app/session/signal_pipe.hpp"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace orvel::session {

namespace {

/// A signal handler is given no context: where each signal leaves its byte.
std::array<std::atomic<int>, NSIG>
    writeEnds;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

std::atomic<int>& writeEndOf(int signal) { return writeEnds.at(static_cast<std::size_t>(signal)); }

void note(int signal) {
    const int error = errno;
    const char byte = '!';
    static_cast<void>(::write(writeEndOf(signal).load(), &byte, 1) == 1);
    errno = error;
}

void install(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

SignalPipe::SignalPipe(std::initializer_list<int> signals) : signals_(signals) {
    if (::pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        signals_.clear();
        return;
    }
    for (const int signal : signals_) {
        writeEndOf(signal) = ends_[1];
        install(signal, note);
    }
}

SignalPipe::~SignalPipe() {
    for (const int signal : signals_) {
        install(signal, SIG_IGN);
        writeEndOf(signal) = -1;
    }
    for (const int end : ends_) {
        if (end >= 0) ::close(end);
    }
}

std::unique_ptr<qt::ReadableWatch> SignalPipe::watch(qt::QtRunLoop& runLoop, Task told) const {
    if (ends_[0] < 0) return nullptr;
    return runLoop.watchReadable(ends_[0], [from = ends_[0], told = std::move(told)] {
        std::array<char, 16> bytes{};
        if (::read(from, bytes.data(), bytes.size()) > 0) told();
    });
}

}  // namespace orvel::session
