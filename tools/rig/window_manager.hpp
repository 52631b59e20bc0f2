#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/x_connection.hpp"

namespace orvel::rig {

/// A window manager of the distribution with its own default settings.
class WindowManager {
public:
    enum class Kind { openbox, xfwm4 };

    /// Returns when the window manager manages windows.
    WindowManager(Kind kind, const Environment& environment, XConnection& x);

private:
    ChildProcess process_;
};

}  // namespace orvel::rig
