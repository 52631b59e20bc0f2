#pragma once

#include "tools/rig/child_process.hpp"

#include <string>

namespace orvel::rig {

/// An application that copies and pastes when it is told to.
class ClipboardApp {
public:
    /// One of each common toolkit, and one that can be told to misbehave.
    enum class Kind { gtk, qt, plain };

    /// Returns when the application obeys.
    ClipboardApp(Kind kind, const Environment& environment);

    /// Does what the line says, as its program describes it, and returns the answer. A RigError
    /// when there is none.
    std::string tell(const std::string& line);
    ChildProcess& process() { return process_; }

private:
    std::string nextAnswer(std::size_t from);

    ChildProcess process_;
};

}  // namespace orvel::rig
