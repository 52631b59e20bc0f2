#include "tools/rig/picture.hpp"

#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <memory>
#include <png.h>

namespace orvel::rig {
namespace {

struct DestroyImage {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

Colour colourOf(unsigned long pixel) {
    return {static_cast<std::uint8_t>(pixel >> 16 & 0xff),
            static_cast<std::uint8_t>(pixel >> 8 & 0xff), static_cast<std::uint8_t>(pixel & 0xff)};
}

}  // namespace

Colour Picture::at(int x, int y) const {
    return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(x));
}

std::size_t Picture::colourCount() const {
    std::vector<bool> seen(1U << 24);
    for (const Colour& colour : pixels) {
        seen[static_cast<std::size_t>(colour.red << 16 | colour.green << 8 | colour.blue)] = true;
    }
    return static_cast<std::size_t>(std::count(seen.begin(), seen.end(), true));
}

void Picture::writePng(const std::filesystem::path& file) const {
    static_assert(sizeof(Colour) == 3, "libpng reads the pixels as packed bytes");
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, file.c_str(), 0, pixels.data(), 0, nullptr) == 0) {
        throw RigError("cannot write " + file.string() + ": " + image.message);
    }
}

Picture screenshot(XConnection& x) {
    Window root = None;
    int left = 0;
    int top = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    // Asked for each time: the size that Xlib remembers does not follow the monitors.
    XGetGeometry(x.get(), x.root(), &root, &left, &top, &width, &height, &border, &depth);
    return pictureOf(x, x.root(), 0, 0, static_cast<int>(width), static_cast<int>(height));
}

Picture pictureOf(XConnection& x, Window window) {
    const auto frame = frameOf(x, window);
    return pictureOf(x, window, 0, 0, frame.width, frame.height);
}

Picture pictureOf(XConnection& x, Window window, int left, int top, int width, int height) {
    const std::unique_ptr<XImage, DestroyImage> image(
        XGetImage(x.get(), window, left, top, static_cast<unsigned>(width),
                  static_cast<unsigned>(height), AllPlanes, ZPixmap));
    if (!image) {
        throw RigError("the server gives no picture of the window");
    }
    Picture picture{width, height, {}};
    picture.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            picture.pixels.push_back(colourOf(XGetPixel(image.get(), column, row)));
        }
    }
    return picture;
}

}  // namespace orvel::rig
