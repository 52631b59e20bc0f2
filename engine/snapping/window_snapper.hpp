#pragma once

#include "app/preferences.hpp"
#include "engine/engine_state.hpp"
#include "engine/snapping/snap_geometry.hpp"
#include "platform/accessibility_windows.hpp"
#include "platform/log.hpp"
#include "platform/screens.hpp"
#include "platform/workspace.hpp"

#include <string>

namespace orvel {

/// Moves the focused window of the front application by arrow keys. Reads the window, decides by
/// its last state and applies; every failure ends silently. Main thread; bounded in time.
class WindowSnapper {
public:
    struct Ports {
        AccessibilityWindows& windows;
        Workspace& workspace;
        Screens& screens;
        Log& log;
    };

    WindowSnapper(Ports ports, const Preferences& preferences, EngineState& state)
        : ports_(ports), preferences_(preferences), state_(state) {}

    void snapActiveWindow(SnapDirection direction);

private:
    struct Target {
        AxWindow window;
        std::string key;
        AxRect frame;
    };

    void bringBackMinimizedWindow(ProcessId pid);
    void apply(const Target& target, SnapDirection direction, const Screen& screen);
    void snap(const Target& target, SnapDirection direction, const Screen& screen);
    void restore(const Target& target);
    void applyWindowFrame(const AxWindow& window, const AxRect& frame);

    Ports ports_;
    const Preferences& preferences_;
    EngineState& state_;
};

}  // namespace orvel
