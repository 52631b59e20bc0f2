#pragma once

#include <CoreGraphics/CoreGraphics.h>

namespace orvel::macos {

/// The same numbers as one of our rectangles: of the screens', of the accessibility's coordinates.
template <typename Rect>
Rect rectFrom(const CGRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

}  // namespace orvel::macos
