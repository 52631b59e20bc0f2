#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <vector>

namespace orvel::x11 {

/// Runs a program to its end: its standard output and standard error as one text, in the order in
/// which they were written. Arguments are passed as they are. Fails when it cannot be started.
Result<std::string> runProgram(const std::string& path, const std::vector<std::string>& arguments,
                               const std::string& display = {});

/// Starts a program that outlives this one, and does not wait for it.
Result<> startProgram(const std::string& path, const std::vector<std::string>& arguments,
                      const std::string& display = {});

/// For a child between fork and exec: a session of its own and no signal blocked.
void detachFromParent();

}  // namespace orvel::x11
