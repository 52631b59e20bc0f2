#include "platform/macos/mac_picture.hpp"

#include "platform/base/bitmap.hpp"
#include "platform/base/picture_size.hpp"

#include <atomic>

namespace orvel::macos {

namespace {

std::shared_ptr<const Bitmap> draw(CGImageRef image, PictureSize size) {
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
    const PictureSize size = pictureSizeFor(static_cast<int>(CGImageGetWidth(image)),
                                            static_cast<int>(CGImageGetHeight(image)));
    picture.native = draw(image, size);
    if (picture.native == nullptr) return picture;
    picture.pixelWidth = size.width;
    picture.pixelHeight = size.height;
    picture.serial = ++lastSerial;
    return picture;
}

}  // namespace orvel::macos
