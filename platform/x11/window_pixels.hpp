#pragma once

#include "platform/base/bitmap.hpp"
#include "platform/base/picture_size.hpp"
#include "platform/x11/root_layout.hpp"

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvel::x11 {

/// How a server stores the pixels of drawables of one depth and visual.
struct PixelLayout {
    int bitsPerPixel = 32;
    /// Whether the bytes of a pixel stand in the other order than in this process.
    bool isSwapped = false;
    std::uint32_t red = 0xff0000;
    std::uint32_t green = 0x00ff00;
    std::uint32_t blue = 0x0000ff;
    /// Zero when every pixel is opaque.
    std::uint32_t alpha = 0;

    /// False for colours by table and for sizes that no server of today has.
    [[nodiscard]] bool isReadable() const;
};

/// Pixels as the server gave them.
struct ServerPixels {
    std::span<const std::byte> bytes;
    std::size_t bytesPerLine = 0;
    int width = 0;
    int height = 0;
    PixelLayout layout;
    /// What of them counts; the rest is transparent. Empty: all.
    std::span<const RootRect> shape{};
};

/// The same picture in this size, no larger than the original: each pixel is the mean of those it
/// stands for. Empty when the layout is not readable or bytes are missing.
Bitmap shrink(const ServerPixels& pixels, PictureSize size);

}  // namespace orvel::x11
