#pragma once

#include "tools/rig/child_process.hpp"

#include <map>
#include <string>
#include <variant>

namespace orvel::rig {

/// Stored settings by key.
using Settings = std::map<std::string, std::variant<bool, std::string>>;

/// Writes the settings file of the home that this environment names, as another program would.
void writeSettings(const Environment& environment, const Settings& settings);

/// The core modifier mapping that most people use: the Control key is Command, the Super key Win.
Settings usualMapping();

/// The resident program in a desktop.
class OrvelProgram {
public:
    /// Runs `program run` with these options; returns when it has started. A RigError tells what
    /// it said instead.
    OrvelProgram(const std::string& program, const Environment& environment,
                 const std::vector<std::string>& options = {});

    ChildProcess& process() { return process_; }
    /// Ends it in good order.
    ExitStatus stop() { return process_.stop(); }

private:
    ChildProcess process_;
};

}  // namespace orvel::rig
