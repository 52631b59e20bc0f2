#pragma once

namespace orvel {

/// The widest place that shows a picture, at double scale and with some reserve. A whole window
/// has a hundred times as many bytes, and one picture of each window is kept.
inline constexpr int kLargestPictureSide = 640;

/// Pixels in each direction.
struct PictureSize {
    int width = 0;
    int height = 0;
    bool operator==(const PictureSize&) const = default;
};

/// How large the picture of something of this size is kept: in the same shape, no larger than any
/// place that shows it, unless that made a wide enough window a sliver. At least one pixel.
PictureSize pictureSizeFor(int width, int height);

}  // namespace orvel
