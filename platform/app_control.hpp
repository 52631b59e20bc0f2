#pragma once

#include "platform/accessibility_windows.hpp"

#include <vector>

namespace orvel {

/// This program itself, as the desktop sees it. Main thread.
class AppControl {
public:
    virtual ~AppControl() = default;

    [[nodiscard]] virtual ProcessId ownPid() const = 0;
    /// Every running copy of this program with this one among them, in the desktop's order.
    [[nodiscard]] virtual std::vector<ProcessId> runningInstances() const = 0;
    /// Brings this program to the front, whatever is there now.
    virtual void activateSelf() = 0;
    /// Closes windows that the desktop's framework opened by itself; panels stay.
    virtual void closeStrayWindows() = 0;
    /// Asks the desktop to end this program; its termination sequence runs before it ends.
    virtual void terminate() = 0;
};

}  // namespace orvel
