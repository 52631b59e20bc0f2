#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvel {

/// Pixels in memory: rows from top to bottom without padding, each pixel 0xAARRGGBB with the
/// colours already multiplied by the alpha. What `Picture::native` holds on an X11 desktop.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] bool isEmpty() const { return pixels.empty(); }
    [[nodiscard]] std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    bool operator==(const Bitmap&) const = default;
};

}  // namespace orvel
