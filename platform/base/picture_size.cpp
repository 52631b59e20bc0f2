#include "platform/base/picture_size.hpp"

#include <algorithm>
#include <cmath>

namespace orvel {

namespace {

/// Narrower ones are taken for slivers that are not worth showing, which a tall window is not.
constexpr double kLeastWidth = 64;

}  // namespace

PictureSize pictureSizeFor(int width, int height) {
    const double fitting = static_cast<double>(kLargestPictureSide) / std::max({width, height, 1});
    const double scale = std::min(1.0, std::max(fitting, kLeastWidth / std::max(width, 1)));
    const auto scaled = [scale](int side) {
        return std::max(1, static_cast<int>(std::lround(side * scale)));
    };
    return {scaled(width), scaled(height)};
}

}  // namespace orvel
