#include "platform/x11/size_hints.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace orvel::x11 {
namespace {

/// WM_NORMAL_HINTS with these flags.
std::vector<std::uint32_t> hints(std::uint32_t flags) {
    return {flags, 0, 0, 0, 0, 200, 100, 900, 700, 10, 20, 0, 0, 0, 0, 4, 8, 0};
}
constexpr std::uint32_t kLeast = 16, kMost = 32, kStep = 64, kBase = 256;

TEST(SizeHints, WithoutAnyEverySizeIsAllowed) {
    EXPECT_EQ(sizeHintsOf({}).allowed({640, 480}), (PixelSize{640, 480}));
    EXPECT_EQ(sizeHintsOf(hints(0)).allowed({1, 1}), (PixelSize{1, 1}));
}

TEST(SizeHints, ASizeStaysBetweenTheLimits) {
    const SizeHints limited = sizeHintsOf(hints(kLeast | kMost));
    EXPECT_EQ(limited.allowed({150, 300}), (PixelSize{200, 300}));
    EXPECT_EQ(limited.allowed({1000, 50}), (PixelSize{900, 100}));
}

TEST(SizeHints, ATerminalHasWholeCells) {
    const SizeHints cells = sizeHintsOf(hints(kStep | kBase));
    EXPECT_EQ(cells.allowed({603, 401}), (PixelSize{594, 388}));
    EXPECT_EQ(cells.allowed({594, 388}), (PixelSize{594, 388}));
    EXPECT_EQ(cells.allowed({1, 1}), (PixelSize{4, 8}));
}

TEST(SizeHints, StepsAreCountedFromTheLeastSizeWhereThereIsNoBase) {
    const SizeHints cells = sizeHintsOf(hints(kStep | kLeast));
    EXPECT_EQ(cells.allowed({219, 139}), (PixelSize{210, 120}));
}

TEST(SizeHints, SenselessNumbersAreNoLimit) {
    EXPECT_EQ(sizeHintsOf({kLeast | kMost | kStep}).allowed({640, 480}), (PixelSize{640, 480}));
    auto broken = hints(kStep | kMost);
    broken[7] = 0xFFFFFFFF;
    broken[9] = 0;
    EXPECT_EQ(sizeHintsOf(broken).allowed({2000, 480}), (PixelSize{2000, 480}));
}

}  // namespace
}  // namespace orvel::x11
