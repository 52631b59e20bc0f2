#pragma once

#include "platform/run_loop.hpp"

namespace orvel::macos {

/// A timer on the main run loop that also fires while a menu or a drag is being tracked. Runs
/// `task` after `delay`, and then every `interval` unless that is zero. Main thread.
std::unique_ptr<Timer> startTimer(Duration delay, Duration interval, Task task);

}  // namespace orvel::macos
