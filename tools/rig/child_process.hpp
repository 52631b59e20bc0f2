#pragma once

#include "tools/rig/environment.hpp"
#include "tools/rig/line_log.hpp"
#include "tools/rig/poll_until.hpp"
#include "tools/rig/unique_fd.hpp"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace orvel::rig {

/// How a process ended: with an exit code, or by a signal.
struct ExitStatus {
    std::optional<int> code;
    std::optional<int> signal;

    bool success() const { return code == 0; }
    bool operator==(const ExitStatus&) const = default;
};

/// What to start and with what.
struct Command {
    std::vector<std::string> arguments;  ///< the program first; looked up in PATH
    Environment environment;
    std::string folder{};        ///< working directory; empty: ours
    std::vector<int> keepFds{};  ///< descriptors of ours that stay open under their own number
};

/// A child in a process group of its own, with its output collected. The whole group is killed
/// at the end of this object, and also when the thread that started it ends in any way.
class ChildProcess {
public:
    explicit ChildProcess(const Command& command);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    bool running();
    LineLog& out() { return *out_; }
    LineLog& err() { return *err_; }

    /// Sends a signal to the process alone; one that has ended is left in peace.
    void signal(int number);
    /// Sends a signal to the process and everything it started in its group.
    void signalGroup(int number);

    void writeLine(std::string_view line);
    void closeInput() { input_.reset(); }

    /// Nothing when the process still runs after the limit.
    std::optional<ExitStatus> waitForExit(std::chrono::milliseconds limit = kPatience);
    /// SIGTERM, then SIGKILL for the group when it does not obey within the limit.
    ExitStatus stop(std::chrono::milliseconds limit = std::chrono::milliseconds(3000));

private:
    std::string name_;
    pid_t pid_ = -1;
    UniqueFd pidFd_;
    UniqueFd input_;
    std::unique_ptr<LineLog> out_;
    std::unique_ptr<LineLog> err_;
    std::optional<ExitStatus> ended_;
};

/// Runs a tool to its end and returns its standard output; a failure is a RigError with what
/// the tool said.
std::string runTool(const std::vector<std::string>& arguments, const Environment& environment);

}  // namespace orvel::rig
