#pragma once

#include "platform/event_tap.hpp"
#include "platform/log.hpp"
#include "platform/run_loop.hpp"

#include <memory>

namespace orvel {

/// Switches the tap on again when the desktop switched it off. Stops when destroyed. Main thread.
class TapWatchdog {
public:
    TapWatchdog(EventTap& tap, Log& log, RunLoop& runLoop);

private:
    void tick();

    EventTap& tap_;
    Log& log_;
    std::unique_ptr<Timer> timer_;
};

}  // namespace orvel
