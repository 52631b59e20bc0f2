#include "platform/macos/mac_picture.hpp"

#include "platform/base/bitmap.hpp"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace orvel::macos {

namespace {

/// The widest place that shows a picture, at double scale and with some reserve. A whole window
/// has a hundred times as many bytes, and one of each window is kept.
constexpr double kLargestSide = 640;

struct PixelSize {
    int width;
    int height;
};

PixelSize sizeFor(CGImageRef image) {
    const auto width = static_cast<double>(CGImageGetWidth(image));
    const auto height = static_cast<double>(CGImageGetHeight(image));
    const double scale = std::min(1.0, kLargestSide / std::max({width, height, 1.0}));
    const auto scaled = [scale](double side) {
        return std::max(1, static_cast<int>(std::lround(side * scale)));
    };
    return {scaled(width), scaled(height)};
}

std::shared_ptr<const Bitmap> draw(CGImageRef image, PixelSize size) {
    const auto width = static_cast<std::size_t>(size.width);
    const auto height = static_cast<std::size_t>(size.height);
    const auto bitmap = std::make_shared<Bitmap>();
    bitmap->width = size.width;
    bitmap->height = size.height;
    bitmap->pixels.resize(width * height);
    const CfRef<CGColorSpaceRef> colors(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    constexpr std::uint32_t kLayout = static_cast<std::uint32_t>(kCGImageAlphaPremultipliedFirst) |
                                      static_cast<std::uint32_t>(kCGBitmapByteOrder32Little);
    const CfRef<CGContextRef> context(CGBitmapContextCreate(bitmap->pixels.data(), width, height, 8,
                                                            width * sizeof(std::uint32_t),
                                                            colors.get(), kLayout));
    if (!context) return nullptr;
    CGContextDrawImage(context.get(), CGRectMake(0, 0, size.width, size.height), image);
    return bitmap;
}

}  // namespace

Picture pictureOf(CGImageRef image) {
    static std::atomic<std::int64_t> lastSerial = 0;
    Picture picture;
    if (image == nullptr) return picture;
    const PixelSize size = sizeFor(image);
    picture.native = draw(image, size);
    if (picture.native == nullptr) return picture;
    picture.pixelWidth = size.width;
    picture.pixelHeight = size.height;
    picture.serial = ++lastSerial;
    return picture;
}

}  // namespace orvel::macos
