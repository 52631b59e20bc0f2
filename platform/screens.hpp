#pragma once

#include "platform/base/geometry.hpp"

#include <vector>

namespace orvel {

struct Screen {
    ScreenRect frame;
    ScreenRect visibleFrame;  ///< what menu bars, docks and panels of the desktop leave free

    bool operator==(const Screen&) const = default;
};

/// Main thread.
class Screens {
public:
    virtual ~Screens() = default;

    /// The main screen first; empty when there is none.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
};

}  // namespace orvel
