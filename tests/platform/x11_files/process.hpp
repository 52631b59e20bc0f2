#pragma once

#include <csignal>
#include <functional>
#include <optional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace orvel::test {

/// Another process that runs a function, with a pipe to tell numbers through.
class Process {
public:
    explicit Process(const std::function<void(int pipe)>& function) {
        if (pipe(pipe_) != 0) throw std::runtime_error("no pipe");
        pid_ = fork();
        if (pid_ == 0) {
            function(pipe_[1]);
            _exit(0);
        }
        close(pipe_[1]);
    }
    ~Process() {
        if (pid_ > 0) end(SIGKILL);
        close(pipe_[0]);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// The next number it tells; nothing when it ended.
    std::optional<int> next() {
        int number = 0;
        return read(pipe_[0], &number, sizeof number) == sizeof number ? std::optional(number)
                                                                       : std::nullopt;
    }
    [[nodiscard]] pid_t id() const { return pid_; }
    void end(int signal) {
        kill(pid_, signal);
        wait();
    }
    int wait() {
        int status = 0;
        waitpid(std::exchange(pid_, -1), &status, 0);
        return status;
    }

private:
    pid_t pid_ = -1;
    int pipe_[2] = {-1, -1};
};

inline void tell(int pipe, int number) { static_cast<void>(!write(pipe, &number, sizeof number)); }

}  // namespace orvel::test
