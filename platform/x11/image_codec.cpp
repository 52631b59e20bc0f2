#include "platform/x11/image_codec.hpp"

#include "platform/x11/glib_holders.hpp"

#include <cstring>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <utility>

namespace orvel::x11 {

namespace {

using Pixbuf = GObjectHolder<GdkPixbuf>;
constexpr std::size_t kChunk = std::size_t{1} << 20U;

struct LoaderLimits {
    bool isTooLarge = false;
};

void refuseHugePicture(GdkPixbufLoader* loader, int width, int height, gpointer limits) {
    if (std::int64_t{width} * height <= kMostPixels) return;
    static_cast<LoaderLimits*>(limits)->isTooLarge = true;
    // A loader told to make nothing stops before it allocates the pixels.
    gdk_pixbuf_loader_set_size(loader, 0, 0);
}

bool feed(GdkPixbufLoader* loader, std::span<const std::byte> encoded, const LoaderLimits& limits,
          GError** error) {
    while (!encoded.empty() && !limits.isTooLarge) {
        const auto part = encoded.first(std::min(encoded.size(), kChunk));
        if (gdk_pixbuf_loader_write(loader, reinterpret_cast<const guchar*>(part.data()),
                                    part.size(), error) == FALSE)
            return false;
        encoded = encoded.subspan(part.size());
    }
    return true;
}

Result<Pixbuf> decode(std::span<const std::byte> encoded) {
    const GObjectHolder<GdkPixbufLoader> loader(gdk_pixbuf_loader_new());
    LoaderLimits limits;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(refuseHugePicture), &limits);
    GError* problem = nullptr;
    const bool isFed = feed(loader.get(), encoded, limits, &problem);
    const GErrorHolder feedError(problem);
    problem = nullptr;
    const bool isClosed = gdk_pixbuf_loader_close(loader.get(), &problem) != FALSE;
    const GErrorHolder closeError(problem);
    if (limits.isTooLarge) return Failure{"the picture has too many pixels"};
    if (!isFed) return Failure{messageOf(feedError)};
    if (!isClosed) return Failure{messageOf(closeError)};
    GdkPixbuf* pixels = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (pixels == nullptr) return Failure{"the picture is empty"};
    return Pixbuf(gdk_pixbuf_apply_embedded_orientation(pixels));
}

Result<std::vector<std::byte>> encode(GdkPixbuf* pixels, const char* format,
                                      const char* option = nullptr, const char* value = nullptr) {
    gchar* buffer = nullptr;
    gsize size = 0;
    GError* problem = nullptr;
    const bool isSaved = gdk_pixbuf_save_to_buffer(pixels, &buffer, &size, format, &problem, option,
                                                   value, nullptr) != FALSE;
    const GErrorHolder error(problem);
    const GText owner(buffer);
    if (!isSaved) return Failure{messageOf(error)};
    const auto* begin = reinterpret_cast<const std::byte*>(buffer);
    return std::vector<std::byte>(begin, begin + size);
}

Result<std::vector<std::byte>> readFile(const std::string& path) {
    gchar* buffer = nullptr;
    gsize size = 0;
    GError* problem = nullptr;
    const bool isRead = g_file_get_contents(path.c_str(), &buffer, &size, &problem) != FALSE;
    const GErrorHolder error(problem);
    const GText owner(buffer);
    if (!isRead) return Failure{messageOf(error)};
    const auto* begin = reinterpret_cast<const std::byte*>(buffer);
    return std::vector<std::byte>(begin, begin + size);
}

bool isTiff(std::span<const std::byte> bytes) {
    return bytes.size() > 8 && (std::memcmp(bytes.data(), "II*\0", 4) == 0 ||
                                std::memcmp(bytes.data(), "MM\0*", 4) == 0);
}

std::uint32_t premultiplied(const guchar* pixel, bool hasAlpha) {
    const std::uint32_t alpha = hasAlpha ? pixel[3] : 255U;
    const auto scaled = [alpha](std::uint32_t colour) { return (colour * alpha + 127U) / 255U; };
    return alpha << 24U | scaled(pixel[0]) << 16U | scaled(pixel[1]) << 8U | scaled(pixel[2]);
}

Bitmap toBitmap(GdkPixbuf* pixels) {
    Bitmap bitmap{gdk_pixbuf_get_width(pixels), gdk_pixbuf_get_height(pixels), {}};
    bitmap.pixels.reserve(static_cast<std::size_t>(bitmap.width) *
                          static_cast<std::size_t>(bitmap.height));
    const auto channels = gdk_pixbuf_get_n_channels(pixels);
    const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixels) != FALSE;
    const auto* rows = gdk_pixbuf_read_pixels(pixels);
    for (int y = 0; y < bitmap.height; ++y) {
        const auto* pixel = rows + std::ptrdiff_t{y} * gdk_pixbuf_get_rowstride(pixels);
        for (int x = 0; x < bitmap.width; ++x, pixel += channels)
            bitmap.pixels.push_back(premultiplied(pixel, hasAlpha));
    }
    return bitmap;
}

}  // namespace

Result<TiffImage> toTiff(std::span<const std::byte> encoded) {
    auto decoded = decode(encoded);
    if (!decoded) return Failure{decoded.error()};
    const auto pixels = std::move(decoded).value();
    TiffImage image{gdk_pixbuf_get_width(pixels.get()), gdk_pixbuf_get_height(pixels.get()), {}};
    if (isTiff(encoded)) {
        image.bytes.assign(encoded.begin(), encoded.end());
        return image;
    }
    auto bytes = encode(pixels.get(), "tiff");
    if (!bytes) return Failure{bytes.error()};
    image.bytes = std::move(bytes).value();
    return image;
}

Result<PictureForms> readPictureForms(const std::string& path) {
    auto bytes = readFile(path);
    if (!bytes) return Failure{bytes.error()};
    auto decoded = decode(bytes.value());
    if (!decoded) return Failure{decoded.error()};
    const auto pixels = std::move(decoded).value();
    auto png = encode(pixels.get(), "png", "compression", "1");
    if (!png) return Failure{png.error()};
    auto tiff = isTiff(bytes.value()) ? std::move(bytes) : encode(pixels.get(), "tiff");
    if (!tiff) return Failure{tiff.error()};
    return PictureForms{gdk_pixbuf_get_width(pixels.get()), gdk_pixbuf_get_height(pixels.get()),
                        std::move(tiff).value(), std::move(png).value()};
}

bool isPictureFile(const std::string& path) {
    return gdk_pixbuf_get_file_info(path.c_str(), nullptr, nullptr) != nullptr;
}

Result<Bitmap> readPicture(const std::string& path, int size) {
    GError* problem = nullptr;
    const Pixbuf pixels(size == 0
                            ? gdk_pixbuf_new_from_file(path.c_str(), &problem)
                            : gdk_pixbuf_new_from_file_at_size(path.c_str(), size, size, &problem));
    const GErrorHolder error(problem);
    if (pixels == nullptr) return Failure{messageOf(error)};
    return toBitmap(pixels.get());
}

}  // namespace orvel::x11
