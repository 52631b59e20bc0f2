#pragma once

#include <functional>
#include <string>
#include <vector>

namespace orvel {

/// Starts a command that needs a desktop session, with every word of the command line; returns the
/// exit status to end with.
using SessionStart = std::function<int(const std::vector<std::string>& arguments)>;

/// The command line of the program. Without a command it runs in this session. Returns the exit
/// status to end with.
int runFrontDoor(int argc, char** argv, const SessionStart& startSession);

}  // namespace orvel
