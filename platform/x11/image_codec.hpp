#pragma once

#include "platform/base/bitmap.hpp"
#include "platform/base/result.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Pictures larger than this are refused before their pixels are made: 200 megapixels.
inline constexpr std::int64_t kMostPixels = 200'000'000;

struct TiffImage {
    int pixelWidth = 0;
    int pixelHeight = 0;
    std::vector<std::byte> bytes;
};

/// Turns an encoded picture of any format that the desktop's library reads into TIFF. A TIFF is
/// checked and kept as it is.
Result<TiffImage> toTiff(std::span<const std::byte> encoded);

/// The picture in a file as PNG, for applications that ask for one.
Result<std::vector<std::byte>> fileToPng(const std::string& path);

/// Reads a picture file; one without a size of its own, or larger, is made to fit into a square of
/// `size` pixels. 0 keeps its own size.
Result<Bitmap> readPicture(const std::string& path, int size);

}  // namespace orvel::x11
