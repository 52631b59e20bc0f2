#include "platform/x11/guard_process.hpp"

#include "platform/x11/heartbeat.hpp"
#include "platform/x11/synthetic_release.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

// This header of glibc 2.36 forgets to say that its functions are C.
extern "C" {
#include <sys/pidfd.h>
}

namespace orvel::x11 {

namespace {

constexpr char kBeat = '.';
constexpr char kFarewell = 'q';

/// How long the main thread of a process has waited for a processor since it was last asked about;
/// nothing where the kernel does not tell.
class ProcessorWait {
public:
    explicit ProcessorWait(pid_t process)
        : path_("/proc/" + std::to_string(process) + "/schedstat"), last_(total()) {}

    Heartbeat::Time sinceLast() {
        const Heartbeat::Time now = total();
        return now - std::exchange(last_, now);
    }

private:
    [[nodiscard]] Heartbeat::Time total() const {
        std::ifstream file(path_);
        Heartbeat::Time::rep ran = 0;
        Heartbeat::Time::rep waited = 0;
        return file >> ran >> waited ? Heartbeat::Time(waited) : Heartbeat::Time::zero();
    }

    std::string path_;
    Heartbeat::Time last_;
};

/// What the guard waits for, in its own process.
class Watch {
public:
    Watch(int pipe, int parent) : pipe_(pipe), parent_(parent), processorWait_(::getppid()) {}

    /// Returns when the watched process ended or hangs; false when it ended in good order.
    bool waitForTrouble() {
        while (!hasEnded_ && !heartbeat_.hasStopped()) listen();
        return !isFarewell_;
    }
    [[nodiscard]] bool hasHung() const { return heartbeat_.hasStopped(); }
    void endParent() const { pidfd_send_signal(parent_, SIGKILL, nullptr, 0); }

private:
    void listen() {
        pollfd readable{pipe_, POLLIN, 0};
        const int ready = ::poll(&readable, 1, static_cast<int>(kSilenceSlice.count()));
        const Heartbeat::Time waited = processorWait_.sinceLast();
        if (ready == 0) return heartbeat_.silentSlice(waited);
        if (ready < 0) return;
        char bytes[64];
        const ssize_t count = ::read(pipe_, bytes, sizeof bytes);
        if (count == 0) hasEnded_ = true;
        if (count <= 0) return;
        heartbeat_.beat();
        isFarewell_ |= std::memchr(bytes, kFarewell, static_cast<std::size_t>(count)) != nullptr;
        hasEnded_ |= isFarewell_;
    }

    int pipe_;
    int parent_;
    ProcessorWait processorWait_;
    Heartbeat heartbeat_;
    bool hasEnded_ = false;
    bool isFarewell_ = false;
};

/// Everything else that we inherited is closed: a connection of the watched process that stays
/// open here would keep the server from noticing its death.
void keepOnly(int& pipe, int& parent) {
    constexpr int first = 100;
    pipe = ::fcntl(pipe, F_DUPFD, first);
    parent = ::fcntl(parent, F_DUPFD, first);
    const auto last = static_cast<unsigned>(std::max(pipe, parent));
    ::close_range(STDERR_FILENO + 1, first - 1, 0);
    ::close_range(last + 1, ~0U, 0);
}

/// Signals for the whole terminal or session shall not end the guard before its work is done.
void standAside() {
    ::setsid();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) ::signal(signal, SIG_IGN);
    ::prctl(PR_SET_NAME, "orvel-guard");
}

[[noreturn]] void guard(int pipe, int parent, const std::string& display) {
    standAside();
    const char aside = 1;
    static_cast<void>(!::write(pipe, &aside, 1));
    keepOnly(pipe, parent);
    auto devices = SyntheticRelease::open(display);
    Watch watch(pipe, parent);
    const bool isTrouble = watch.waitForTrouble();
    if (watch.hasHung()) {
        std::fputs(
            "orvel: the session process does not answer; it is ended and the keyboard is "
            "given back\n",
            stderr);
        watch.endParent();
    }
    if (isTrouble && devices) {
        SyntheticRelease release = std::move(devices).value();
        release.releaseEverything();
    }
    ::_exit(0);
}

Failure failure(const char* what) {
    return Failure{std::string(what) + ": " + std::strerror(errno)};
}

}  // namespace

namespace {

/// Until the guard stands aside, a signal that ends the whole group of this process ends it too.
void waitUntilAside(int pipe) {
    constexpr int kPatienceMs = 2000;
    pollfd readable{pipe, POLLIN, 0};
    char aside = 0;
    if (::poll(&readable, 1, kPatienceMs) > 0) static_cast<void>(!::read(pipe, &aside, 1));
}

}  // namespace

Result<GuardProcess> GuardProcess::start(const std::string& display) {
    int ends[2];
    // A socket, since writing to a broken pipe would raise a signal.
    constexpr int type = SOCK_STREAM | SOCK_CLOEXEC;
    if (::socketpair(AF_UNIX, type, 0, ends) != 0) return failure("cannot reach the guard process");
    const int parent = ::pidfd_open(::getpid(), 0);
    std::fflush(nullptr);
    const pid_t child = parent < 0 ? -1 : ::fork();
    if (child == 0) {
        guard(ends[0], parent, display);
    }
    const int error = errno;
    if (parent >= 0) ::close(parent);
    ::close(ends[0]);
    if (child < 0) {
        ::close(ends[1]);
        errno = error;
        return failure("cannot start the guard process");
    }
    waitUntilAside(ends[1]);
    return GuardProcess(ends[1], child);
}

GuardProcess::GuardProcess(GuardProcess&& other) noexcept
    : pipe_(std::exchange(other.pipe_, -1)), process_(other.process_) {}

GuardProcess::~GuardProcess() {
    if (pipe_ < 0) return;
    ::send(pipe_, &kFarewell, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
    ::close(pipe_);
    ::waitpid(process_, nullptr, 0);
}

bool GuardProcess::beat() {
    // A full socket means that the guard itself is stopped; it is there, and that is enough.
    return ::send(pipe_, &kBeat, 1, MSG_NOSIGNAL | MSG_DONTWAIT) == 1 || errno == EAGAIN;
}

}  // namespace orvel::x11
