#pragma once

#include <functional>

namespace orvel {

/// Runs a benchmark that drives a desktop of the rig; what goes wrong there ends it with one line.
/// Returns the status of the program.
int runInRig(const std::function<void()>& bench);

}  // namespace orvel
