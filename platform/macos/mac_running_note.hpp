#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/command_line.hpp"
#include "platform/run_loop.hpp"

#include <memory>
#include <optional>
#include <string>

namespace orvel::macos {

/// What a resident program tells about itself to commands of the same user, in a file of the
/// user's temporary folder. Main thread.
class RunningNote {
public:
    RunningNote();
    /// The note goes away with the program.
    ~RunningNote();
    RunningNote(const RunningNote&) = delete;
    RunningNote& operator=(const RunningNote&) = delete;

    /// Without a place for notes the command line knows less, which stops nobody.
    void update(bool isOn, bool isPaused);

private:
    void write() const;

    std::string path_;
    bool isOn_ = false;
    bool isPaused_ = false;
    std::unique_ptr<Timer> renewal_;
};

/// Absent when no program wrote a note, or when the one that did has ended.
std::optional<RunningEngine> readRunningNote();
/// The process that wrote the note; absent likewise.
std::optional<ProcessId> runningProcess();

}  // namespace orvel::macos
