#pragma once

#include "engine/engine_state.hpp"
#include "platform/base/geometry.hpp"
#include "platform/screens.hpp"

namespace orvel {

enum class SnapDirection { left, right, up, down };

/// What an arrow does to a window in a given state.
struct SnapStep {
    enum class Kind { snap, restore, minimize };
    Kind kind = Kind::snap;
    bool savesFrame = false;  ///< remember the frame from before the first snap
};

SnapStep snapStep(SnapDirection direction, WindowSnapState state);

/// Where a snapped window goes. `up` is the full width, centred.
struct SnapArea {
    AxPoint corner;  ///< top left corner of the usable screen
    Size requestedSize;
    double screenWidth = 0;

    /// The left edge for a window that took `actualWidth`: it may refuse the requested size.
    [[nodiscard]] double leftEdge(SnapDirection direction, double actualWidth) const;
};

/// Reaches to the bottom edge of the screen, less the band of the taskbar while that is on.
SnapArea snapArea(const Screen& screen, SnapDirection direction, bool taskbarIsOn);

/// The state that a snap in that direction leaves; not for `down`.
WindowSnapState snappedState(SnapDirection direction);

}  // namespace orvel
