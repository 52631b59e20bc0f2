#pragma once

#include <cstdint>
#include <vector>

namespace orvel::x11 {

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

/// The sizes that an application allows for the client area of its window.
struct SizeHints {
    PixelSize least{1, 1};
    PixelSize most{0, 0};  ///< zero: no limit
    PixelSize base{0, 0};
    PixelSize step{1, 1};

    /// What a window manager that keeps to the hints makes of a wish: the nearest step that is not
    /// above it, between the limits.
    [[nodiscard]] PixelSize allowed(PixelSize wanted) const;
};

/// From WM_NORMAL_HINTS; what is missing or senseless is no limit.
SizeHints sizeHintsOf(const std::vector<std::uint32_t>& numbers);

}  // namespace orvel::x11
