#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/macos/mac_ax_calls.hpp"

#include <map>

namespace orvel::macos {

/// In the enhanced mode that assistive programs switch on, an application animates moves and may
/// not end where it was told to. This switches the mode off for a series of writes and puts back
/// what was there before.
class EnhancedMode {
public:
    ~EnhancedMode() { restore(); }

    /// Before a write to a window; asks each application once until `restore`.
    void pauseFor(const AxBudget& budget, AXUIElementRef window);
    void restore();

private:
    struct Paused {
        CfRef<AXUIElementRef> application;
        CfRef<CFTypeRef> old;  ///< null when there is nothing to put back
    };
    std::map<ProcessId, Paused> paused_;
};

}  // namespace orvel::macos
