#pragma once

#include <array>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvel::test {

/// What a program did until it ended.
struct ProgramRun {
    int status = -1;  ///< minus the signal that ended it
    std::string out;
    std::string err;
};

namespace detail {

struct Pipe {
    std::array<int, 2> ends{-1, -1};
    Pipe() {
        if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    }
    ~Pipe() {
        for (const int end : ends) {
            if (end >= 0) close(end);
        }
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void closeEnd(int end) { close(std::exchange(ends[static_cast<std::size_t>(end)], -1)); }
};

/// Collects both outputs until the program closes them, or does nothing for too long.
inline bool collect(Pipe& out, Pipe& err, ProgramRun& run) {
    constexpr int kPatienceMs = 30'000;
    std::array<pollfd, 2> waiting{pollfd{out.ends[0], POLLIN, 0}, pollfd{err.ends[0], POLLIN, 0}};
    std::array<std::string*, 2> texts{&run.out, &run.err};
    while (waiting[0].fd >= 0 || waiting[1].fd >= 0) {
        if (poll(waiting.data(), waiting.size(), kPatienceMs) <= 0) return false;
        for (std::size_t i = 0; i < waiting.size(); ++i) {
            if (waiting[i].revents == 0) continue;
            std::array<char, 4096> buffer{};
            const ssize_t length = read(waiting[i].fd, buffer.data(), buffer.size());
            if (length > 0) texts[i]->append(buffer.data(), static_cast<std::size_t>(length));
            if (length <= 0) waiting[i].fd = -1;
        }
    }
    return true;
}

}  // namespace detail

/// Runs a program to its end. `input` must fit a pipe.
inline ProgramRun runProgram(const std::vector<std::string>& command, std::string_view input = {}) {
    detail::Pipe in;
    detail::Pipe out;
    detail::Pipe err;
    const pid_t child = fork();
    if (child == 0) {
        dup2(in.ends[0], STDIN_FILENO);
        dup2(out.ends[1], STDOUT_FILENO);
        dup2(err.ends[1], STDERR_FILENO);
        for (const detail::Pipe* pipe : {&in, &out, &err}) {
            for (const int end : pipe->ends) close(end);
        }
        std::vector<char*> arguments;
        for (const std::string& word : command)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    in.closeEnd(0);
    out.closeEnd(1);
    err.closeEnd(1);
    const bool isFed =
        write(in.ends[1], input.data(), input.size()) == static_cast<ssize_t>(input.size());
    in.closeEnd(1);
    ProgramRun run;
    if (!detail::collect(out, err, run) || !isFed) kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return run;
}

/// A program of this build.
inline std::string builtProgram(std::string_view name) {
    const char* build = std::getenv("ORVEL_BUILD_DIR");
    if (build == nullptr) throw std::runtime_error("ORVEL_BUILD_DIR is not set: run by ctest");
    return std::string(build) + "/" + std::string(name);
}

}  // namespace orvel::test
