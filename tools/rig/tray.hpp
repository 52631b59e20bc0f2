#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/windows.hpp"
#include "tools/rig/x_connection.hpp"

#include <optional>

namespace orvel::rig {

/// A tray of the distribution at the right end of the screen's bottom edge.
class Tray {
public:
    /// Returns when icons may dock.
    Tray(const Environment& environment, XConnection& x);

    /// Where the last icon that docked shows; nothing while there is none.
    std::optional<WindowFrame> icon() const;
    /// Waits for an icon that shows; a RigError when none comes.
    WindowFrame waitForIcon() const;

    /// Tells icons what colour symbols have here, as some trays do; absent: no longer.
    void tellColour(const std::optional<Colour>& colour);

private:
    XConnection& x_;
    ChildProcess process_;
    WindowId window_;
};

}  // namespace orvel::rig
