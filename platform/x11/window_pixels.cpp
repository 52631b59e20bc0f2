#include "platform/x11/window_pixels.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

namespace orvel::x11 {

namespace {

constexpr std::uint32_t kOpaque = 0xff000000;

/// One colour of a pixel, spread to 0..255.
std::uint32_t channel(std::uint32_t pixel, std::uint32_t mask) {
    if (mask == 0) return 0;
    const int shift = std::countr_zero(mask);
    const std::uint64_t largest = mask >> shift;
    const std::uint64_t value = (pixel & mask) >> shift;
    return static_cast<std::uint32_t>((value * 255 + largest / 2) / largest);
}

/// Whether the colours stand where a `Bitmap` has them.
bool isPlain(const PixelLayout& layout) {
    return layout.bitsPerPixel == 32 && !layout.isSwapped && layout.red == 0xff0000 &&
           layout.green == 0x00ff00 && layout.blue == 0x0000ff &&
           (layout.alpha == 0 || layout.alpha == kOpaque);
}

std::uint32_t swapped(std::uint32_t pixel, std::size_t size) {
    std::uint32_t turned = 0;
    for (std::size_t byte = 0; byte < size; ++byte) {
        turned = turned << 8U | (pixel & 0xffU);
        pixel >>= 8U;
    }
    return turned;
}

std::uint32_t converted(std::uint32_t pixel, const PixelLayout& layout) {
    const std::uint32_t alpha = layout.alpha == 0 ? 0xffU : channel(pixel, layout.alpha);
    return alpha << 24U | channel(pixel, layout.red) << 16U | channel(pixel, layout.green) << 8U |
           channel(pixel, layout.blue);
}

void convertRow(const ServerPixels& pixels, int y, std::vector<std::uint32_t>& row) {
    const auto* line = pixels.bytes.data() + static_cast<std::size_t>(y) * pixels.bytesPerLine;
    const PixelLayout& layout = pixels.layout;
    if (isPlain(layout)) {
        std::memcpy(row.data(), line, row.size() * sizeof(std::uint32_t));
        if (layout.alpha != 0) return;
        for (auto& pixel : row) pixel |= kOpaque;
        return;
    }
    const auto size = static_cast<std::size_t>(layout.bitsPerPixel) / 8;
    for (std::size_t x = 0; x < row.size(); ++x) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, line + x * size, size);
        row[x] = converted(layout.isSwapped ? swapped(pixel, size) : pixel, layout);
    }
}

void cutOut(const ServerPixels& pixels, int y, std::vector<std::uint32_t>& row) {
    if (pixels.shape.empty()) return;
    std::vector<std::uint32_t> inside(row.size());
    for (const RootRect& part : pixels.shape) {
        if (y < part.y || y >= part.bottom()) continue;
        const int begin = std::clamp(part.x, 0, pixels.width);
        const int end = std::clamp(part.right(), begin, pixels.width);
        std::copy(row.begin() + begin, row.begin() + end, inside.begin() + begin);
    }
    row = std::move(inside);
}

/// The four colours of many pixels added up, two in each number, so that one addition does for two.
struct ColourSum {
    std::uint64_t redAndBlue = 0;
    std::uint64_t alphaAndGreen = 0;

    void add(std::uint32_t pixel) {
        redAndBlue += spread(pixel);
        alphaAndGreen += spread(pixel >> 8U);
    }
    [[nodiscard]] std::uint32_t mean(std::uint32_t count) const {
        return means(redAndBlue, count) | means(alphaAndGreen, count) << 8U;
    }

private:
    static std::uint64_t spread(std::uint32_t pixel) {
        return (pixel & 0xffU) | static_cast<std::uint64_t>(pixel & 0xff0000U) << 16U;
    }
    static std::uint32_t means(std::uint64_t sums, std::uint32_t count) {
        const auto low = (static_cast<std::uint32_t>(sums) + count / 2) / count;
        const auto high = (static_cast<std::uint32_t>(sums >> 32U) + count / 2) / count;
        return low | high << 16U;
    }
};

/// Where the pixels that become one pixel begin, for each of them, and the end of all.
std::vector<std::size_t> edges(std::size_t whole, std::size_t parts) {
    std::vector<std::size_t> found(parts + 1);
    for (std::size_t each = 0; each <= parts; ++each) found[each] = each * whole / parts;
    return found;
}

void addRow(const std::vector<std::uint32_t>& row, const std::vector<std::size_t>& columns,
            std::vector<ColourSum>& sums) {
    for (std::size_t x = 0; x < sums.size(); ++x) {
        ColourSum sum = sums[x];
        for (auto from = columns[x]; from < columns[x + 1]; ++from) sum.add(row[from]);
        sums[x] = sum;
    }
}

bool isComplete(const ServerPixels& pixels) {
    if (!pixels.layout.isReadable() || pixels.width <= 0 || pixels.height <= 0) return false;
    const auto rowBytes = static_cast<std::size_t>(pixels.width) *
                          static_cast<std::size_t>(pixels.layout.bitsPerPixel) / 8;
    const auto linesBefore = static_cast<std::size_t>(pixels.height) - 1;
    return rowBytes <= pixels.bytesPerLine &&
           pixels.bytes.size() >= linesBefore * pixels.bytesPerLine + rowBytes;
}

}  // namespace

bool PixelLayout::isReadable() const {
    const bool hasSize = bitsPerPixel == 16 || bitsPerPixel == 24 || bitsPerPixel == 32;
    // Three bytes in the other order begin at another address than they are read from.
    return hasSize && !(bitsPerPixel == 24 && std::endian::native == std::endian::big) &&
           red != 0 && green != 0 && blue != 0;
}

Bitmap shrink(const ServerPixels& pixels, PictureSize size) {
    if (!isComplete(pixels)) return {};
    Bitmap picture{
        std::clamp(size.width, 1, pixels.width), std::clamp(size.height, 1, pixels.height), {}};
    const auto columns =
        edges(static_cast<std::size_t>(pixels.width), static_cast<std::size_t>(picture.width));
    const auto rows =
        edges(static_cast<std::size_t>(pixels.height), static_cast<std::size_t>(picture.height));
    picture.pixels.reserve((columns.size() - 1) * (rows.size() - 1));
    std::vector<std::uint32_t> row(columns.back());
    for (std::size_t y = 0; y + 1 < rows.size(); ++y) {
        std::vector<ColourSum> sums(columns.size() - 1);
        for (auto from = rows[y]; from < rows[y + 1]; ++from) {
            convertRow(pixels, static_cast<int>(from), row);
            cutOut(pixels, static_cast<int>(from), row);
            addRow(row, columns, sums);
        }
        for (std::size_t x = 0; x < sums.size(); ++x) {
            const auto count = (columns[x + 1] - columns[x]) * (rows[y + 1] - rows[y]);
            picture.pixels.push_back(sums[x].mean(static_cast<std::uint32_t>(count)));
        }
    }
    return picture;
}

}  // namespace orvel::x11
