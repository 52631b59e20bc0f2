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

/// A picture in the forms that applications exchange. One that was only taken in has no PNG.
struct PictureForms {
    int pixelWidth = 0;
    int pixelHeight = 0;
    std::vector<std::byte> tiff;
    std::vector<std::byte> png;
};

/// The picture in a file, in all forms.
Result<PictureForms> readPictureForms(const std::string& path);

/// Whether the file begins like a picture that can be read. Does not decode it.
bool isPictureFile(const std::string& path);

/// Reads a picture file; one without a size of its own, or larger, is made to fit into a square of
/// `size` pixels. 0 keeps its own size.
Result<Bitmap> readPicture(const std::string& path, int size);

}  // namespace orvel::x11
