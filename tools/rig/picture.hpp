#pragma once

#include "tools/rig/x_connection.hpp"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orvel::rig {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    auto operator<=>(const Colour&) const = default;
};

/// Pixels as they stood on the screen.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Colour> pixels;  ///< row by row from the top

    Colour at(int x, int y) const;
    /// How many different colours there are: one means an empty picture.
    std::size_t colourCount() const;
    void writePng(const std::filesystem::path& file) const;
    bool operator==(const Picture&) const = default;
};

/// The whole screen.
Picture screenshot(XConnection& x);
/// A part of the screen, or a window's own pixels where nothing covers it.
Picture pictureOf(XConnection& x, WindowId window, int left, int top, int width, int height);
/// The whole of a window.
Picture pictureOf(XConnection& x, WindowId window);

}  // namespace orvel::rig
