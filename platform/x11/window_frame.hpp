#pragma once

#include "platform/x11/root_layout.hpp"

#include <cstdint>
#include <vector>

namespace orvel::x11 {

/// Widths of the four edges around or inside a window, in the order of the properties.
struct Extents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
    bool operator==(const Extents&) const = default;
};

/// From _NET_FRAME_EXTENTS or _GTK_FRAME_EXTENTS; anything malformed is no extents.
Extents extentsOf(const std::vector<std::uint32_t>& numbers);

/// How the window that people see differs from the one the application draws in: the window
/// manager's frame lies outside, the shadow that an application draws itself lies inside.
struct WindowFrame {
    Extents frame;
    Extents shadow;

    /// What people see of a window, from its client area.
    [[nodiscard]] RootRect seen(const RootRect& client) const;
    /// The client area that makes people see `rect`; at least one pixel in each direction.
    [[nodiscard]] RootRect client(const RootRect& rect) const;
    bool operator==(const WindowFrame&) const = default;
};

}  // namespace orvel::x11
