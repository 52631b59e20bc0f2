#include "tools/rig/child_process.hpp"

#include "tools/rig/rig_error.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvel::rig {
namespace {

struct Pipe {
    UniqueFd readEnd;
    UniqueFd writeEnd;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        failWithErrno("pipe");
    }
    return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

std::vector<char*> pointersInto(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentTexts(const Environment& environment) {
    std::vector<std::string> texts;
    for (const auto& [name, value] : environment) {
        std::string& text = texts.emplace_back(name);
        text += '=';
        text += value;
    }
    return texts;
}

// Everything the child does between fork and exec. Only calls that are safe in the child of a
// process with threads are made, so all texts are prepared before.
struct ChildSide {
    std::array<int, 3> standardFds;
    int failureFd;
    pid_t parent;
    const char* folder;
    const std::vector<int>& keepFds;
    char* const* arguments;
    char* const* environment;

    [[noreturn]] void run() const {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) {
            _exit(127);
        }
        // What the parent ignores or blocks (SIGPIPE, say) is not the child's business.
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        ::signal(SIGPIPE, SIG_DFL);
        for (int number = 0; number < 3; ++number) {
            dup2(standardFds[static_cast<std::size_t>(number)], number);
        }
        for (const int fd : keepFds) {
            fcntl(fd, F_SETFD, 0);
        }
        if (*folder == '\0' || chdir(folder) == 0) {
            execvpe(arguments[0], arguments, environment);
        }
        const int reason = errno;
        [[maybe_unused]] const ssize_t written = write(failureFd, &reason, sizeof reason);
        _exit(127);
    }
};

pid_t spawn(const Command& command, const std::array<int, 3>& standardFds) {
    std::vector<std::string> arguments = command.arguments;
    std::vector<std::string> environment = environmentTexts(command.environment);
    const std::vector<char*> argumentPointers = pointersInto(arguments);
    const std::vector<char*> environmentPointers = pointersInto(environment);
    Pipe failure = makePipe();
    const ChildSide childSide{standardFds,
                              failure.writeEnd.get(),
                              getpid(),
                              command.folder.c_str(),
                              command.keepFds,
                              argumentPointers.data(),
                              environmentPointers.data()};
    const pid_t pid = fork();
    if (pid == 0) {
        childSide.run();
    }
    failure.writeEnd.reset();
    int reason = 0;
    // The pipe closes by itself when exec succeeds.
    const bool failed = pid > 0 && read(failure.readEnd.get(), &reason, sizeof reason) > 0;
    if (pid < 0) {
        failWithErrno("fork");
    }
    if (failed) {
        waitpid(pid, nullptr, 0);
        throw RigError("cannot start " + command.arguments.front() + ": " + std::strerror(reason));
    }
    return pid;
}

ExitStatus exitStatus(const siginfo_t& info) {
    if (info.si_code == CLD_EXITED) {
        return {info.si_status, std::nullopt};
    }
    return {std::nullopt, info.si_status};
}

}  // namespace

ChildProcess::ChildProcess(const Command& command) : name_(command.arguments.at(0)) {
    // A write to a child that is gone is an error to report, not the end of the test.
    ::signal(SIGPIPE, SIG_IGN);
    Pipe input = makePipe();
    Pipe output = makePipe();
    Pipe errors = makePipe();
    input_ = std::move(input.writeEnd);
    out_ = std::make_unique<LineLog>(std::move(output.readEnd));
    err_ = std::make_unique<LineLog>(std::move(errors.readEnd));
    pid_ = spawn(command, {input.readEnd.get(), output.writeEnd.get(), errors.writeEnd.get()});
    pidFd_ = UniqueFd(static_cast<int>(syscall(SYS_pidfd_open, pid_, 0)));
    if (!pidFd_.valid()) {
        failWithErrno("pidfd_open");
    }
}

ChildProcess::~ChildProcess() {
    closeInput();
    signalGroup(SIGKILL);
    waitForExit();
    waitpid(pid_, nullptr, 0);
}

bool ChildProcess::running() { return !waitForExit(std::chrono::milliseconds(0)).has_value(); }

void ChildProcess::signal(int number) {
    if (!ended_) {
        kill(pid_, number);
    }
}

void ChildProcess::signalGroup(int number) {
    // The child is waited for only by our destructor, so its number cannot be anyone else's.
    killpg(pid_, number);
}

void ChildProcess::writeLine(std::string_view line) {
    const std::string bytes = std::string(line) + '\n';
    if (write(input_.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        failWithErrno("cannot write to " + name_);
    }
}

std::optional<ExitStatus> ChildProcess::waitForExit(std::chrono::milliseconds limit) {
    if (ended_) {
        return ended_;
    }
    pollfd wait{pidFd_.get(), POLLIN, 0};
    siginfo_t info{};
    if (poll(&wait, 1, static_cast<int>(limit.count())) > 0 &&
        waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT) == 0) {
        ended_ = exitStatus(info);
    }
    return ended_;
}

ExitStatus ChildProcess::stop(std::chrono::milliseconds limit) {
    signal(SIGTERM);
    if (!waitForExit(limit)) {
        signalGroup(SIGKILL);
    }
    const std::optional<ExitStatus> status = waitForExit();
    if (!status) {
        throw RigError(name_ + " survived SIGKILL");
    }
    return *status;
}

std::string runTool(const std::vector<std::string>& arguments, const Environment& environment) {
    ChildProcess tool({.arguments = arguments, .environment = environment});
    tool.closeInput();
    const std::optional<ExitStatus> status = tool.waitForExit();
    // Whoever the tool left behind may keep its pipes open; what it said itself is there by then.
    constexpr std::chrono::milliseconds kGrace{500};
    tool.out().waitForEnd(kGrace);
    tool.err().waitForEnd(kGrace);
    if (!status || !status->success()) {
        throw RigError(arguments.front() + (status ? " failed: " : " did not end: ") +
                       tool.err().text() + tool.out().text());
    }
    return tool.out().text();
}

}  // namespace orvel::rig
