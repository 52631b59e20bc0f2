#include "platform/x11/window_pixels.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace orvel::x11 {
namespace {

constexpr PixelLayout kOpaqueColours{};
constexpr PixelLayout kWithAlpha{.alpha = 0xff000000};

/// The bytes of a server that stores each pixel as a `Word` of this process.
template <typename Word>
std::vector<std::byte> bytesOf(const std::vector<Word>& words) {
    std::vector<std::byte> bytes(words.size() * sizeof(Word));
    std::memcpy(bytes.data(), words.data(), bytes.size());
    return bytes;
}

template <typename Word>
Bitmap shrunk(const std::vector<Word>& words, int width, PictureSize size,
              const PixelLayout& layout) {
    const auto bytes = bytesOf(words);
    const int height = static_cast<int>(words.size()) / width;
    return shrink({bytes, static_cast<std::size_t>(width) * sizeof(Word), width, height, layout},
                  size);
}

using Words = std::vector<std::uint32_t>;

TEST(WindowPixels, PixelsOfTheSameSizeStayAsTheyAre) {
    const Words words{0x80123456, 0xff000000, 0x00000000, 0xffffffff};
    EXPECT_EQ(shrunk(words, 2, {2, 2}, kWithAlpha), (Bitmap{2, 2, words}));
}

TEST(WindowPixels, WithoutAlphaEveryPixelIsOpaque) {
    EXPECT_EQ(shrunk(Words{0x00123456}, 1, {1, 1}, kOpaqueColours).at(0, 0), 0xff123456U);
}

TEST(WindowPixels, APixelIsTheMeanOfThoseItStandsFor) {
    const Words words{0xff000000, 0xffff0000, 0xff00ff00, 0xffffff00};
    EXPECT_EQ(shrunk(words, 2, {1, 1}, kWithAlpha).at(0, 0), 0xff808000U);
}

TEST(WindowPixels, ALargeAreaOfWhiteStaysWhite) {
    const Words words(1000 * 700, 0xffffffff);
    const Bitmap picture = shrunk(words, 1000, {3, 2}, kWithAlpha);
    EXPECT_EQ(picture, (Bitmap{3, 2, Words(6, 0xffffffff)}));
}

TEST(WindowPixels, EveryPixelCountsOnceWhenTheSizesDoNotDivide) {
    const Words words{0xff000000, 0xff000030, 0xff000060, 0xff000090, 0xff0000c0};
    const Bitmap picture = shrunk(words, 5, {2, 1}, kWithAlpha);
    EXPECT_EQ(picture.at(0, 0), 0xff000018U);
    EXPECT_EQ(picture.at(1, 0), 0xff000090U);
}

TEST(WindowPixels, SixteenBitColoursAreSpreadToTheWholeRange) {
    const PixelLayout layout{.bitsPerPixel = 16, .red = 0xf800, .green = 0x07e0, .blue = 0x001f};
    const Bitmap picture =
        shrunk(std::vector<std::uint16_t>{0xf800, 0x07e0, 0x001f, 0xffff}, 4, {4, 1}, layout);
    EXPECT_EQ(picture.pixels, (Words{0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff}));
}

TEST(WindowPixels, TenBitColoursAreCutToEight) {
    const PixelLayout layout{.red = 0x3ff00000, .green = 0x000ffc00, .blue = 0x000003ff};
    EXPECT_EQ(shrunk(Words{0x3ff80000}, 1, {1, 1}, layout).at(0, 0), 0xffff8000U);
}

TEST(WindowPixels, BytesInTheOtherOrderAreTurned) {
    PixelLayout layout = kWithAlpha;
    layout.isSwapped = true;
    EXPECT_EQ(shrunk(Words{0x44332211}, 1, {1, 1}, layout).at(0, 0), 0x11223344U);
}

TEST(WindowPixels, ThePaddingOfLinesIsLeftOut) {
    const auto bytes = bytesOf(Words{0xff0000ff, 0xdeadbeef, 0xff00ff00, 0xdeadbeef});
    const Bitmap picture = shrink({bytes, 8, 1, 2, kWithAlpha}, {1, 2});
    EXPECT_EQ(picture.pixels, (Words{0xff0000ff, 0xff00ff00}));
}

TEST(WindowPixels, WhatLiesOutsideTheShapeIsTransparent) {
    const auto bytes = bytesOf(Words(6, 0xffffffff));
    const std::vector<RootRect> shape{{1, 0, 1, 1}, {-5, 1, 50, 1}};
    const Bitmap picture = shrink({bytes, 12, 3, 2, kWithAlpha, shape}, {3, 2});
    EXPECT_EQ(picture.pixels, (Words{0, 0xffffffff, 0, 0xffffffff, 0xffffffff, 0xffffffff}));
}

TEST(WindowPixels, NothingIsReadBeyondTheBytesThatCame) {
    const auto bytes = bytesOf(Words{1, 2, 3});
    EXPECT_TRUE(shrink({bytes, 8, 2, 2, kWithAlpha}, {2, 2}).isEmpty());
    EXPECT_TRUE(shrink({bytes, 4, 2, 1, kWithAlpha}, {2, 1}).isEmpty());
    EXPECT_TRUE(shrink({bytes, 4, 0, 1, kWithAlpha}, {1, 1}).isEmpty());
}

TEST(WindowPixels, ColoursByTableAreNotReadable) {
    const PixelLayout layout{.bitsPerPixel = 8};
    EXPECT_TRUE(shrunk(Words{1}, 1, {1, 1}, layout).isEmpty());
}

}  // namespace
}  // namespace orvel::x11
