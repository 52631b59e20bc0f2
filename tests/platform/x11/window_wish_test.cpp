#include "platform/x11/window_wish.hpp"

#include <gtest/gtest.h>

namespace orvel::x11 {
namespace {

const WindowFrame kFrame{{1, 1, 22, 5}, {}};

WindowState window(const RootRect& seen, const WindowFrame& frame = kFrame) {
    return {.client = frame.client(seen), .frame = frame};
}

class WindowWishTest : public testing::Test {
protected:
    /// As a window is snapped to the right half of 1000 pixels when it takes another size.
    void snapToTheRight(PixelSize taken) {
        wish_.moveTo({500, 0});
        wish_.resizeTo({500, 700}, taken, kFrame);
        wish_.moveTo({1000 - taken.width, 0});
    }

    WindowWish wish_;
};

TEST_F(WindowWishTest, AWindowReadsAsWhatItWasAskedToBecome) {
    wish_.moveTo({40, 60});
    wish_.resizeTo({400, 300}, {396, 300}, kFrame);
    wish_.minimize(true);
    const auto now = wish_.applied(window({100, 120, 320, 240}));
    EXPECT_EQ(now.seen(), (RootRect{40, 60, 396, 300}));
    EXPECT_TRUE(now.isMinimized);
}

TEST_F(WindowWishTest, WhatWasNotAskedForReadsAsItIs) {
    wish_.moveTo({40, 60});
    EXPECT_EQ(wish_.applied(window({100, 120, 320, 240})).seen(), (RootRect{40, 60, 320, 240}));
}

TEST_F(WindowWishTest, AWindowThatIsWhereItBelongsIsLeftAlone) {
    snapToTheRight({500, 700});
    EXPECT_FALSE(wish_.correct(window({500, 0, 500, 700})));
}

TEST_F(WindowWishTest, ARequestForThePlaceThatWasDroppedIsMadeAgain) {
    wish_.moveTo({40, 60});
    const auto correction = wish_.correct(window({100, 120, 320, 240}));
    ASSERT_TRUE(correction);
    EXPECT_EQ(correction->place, (PixelPlace{40, 60}));
    EXPECT_FALSE(correction->size);
}

TEST_F(WindowWishTest, ASizeThatWasDecidedOtherwiseIsAccepted) {
    wish_.resizeTo({400, 300}, {400, 300}, kFrame);
    EXPECT_FALSE(wish_.correct(window({0, 0, 800, 300})));
}

TEST_F(WindowWishTest, ASizeIsAskedForAgainWhenTheFrameChanged) {
    wish_.leaveMaximized();
    wish_.resizeTo({400, 300}, {400, 300}, WindowFrame{{0, 0, 21, 0}, {}});
    const auto correction = wish_.correct(window({0, 0, 402, 306}));
    ASSERT_TRUE(correction);
    EXPECT_EQ(correction->size, (PixelSize{400, 300}));
    EXPECT_FALSE(wish_.correct(window({0, 0, 402, 306}))) << "once";
}

TEST_F(WindowWishTest, AWindowAtTheRightEdgeStaysThereWithTheSizeThatItTook) {
    snapToTheRight({600, 700});
    const auto correction = wish_.correct(window({400, 0, 620, 700}));
    ASSERT_TRUE(correction);
    EXPECT_EQ(correction->place, (PixelPlace{380, 0}));
}

TEST_F(WindowWishTest, AWindowManagerWithAnotherOpinionKeepsIt) {
    wish_.moveTo({0, 0});
    EXPECT_TRUE(wish_.correct(window({0, 40, 320, 240})));
    EXPECT_TRUE(wish_.correct(window({0, 40, 320, 240})));
    EXPECT_FALSE(wish_.correct(window({0, 40, 320, 240})));
}

TEST_F(WindowWishTest, ThePlaceOfAHiddenWindowMeansNothing) {
    wish_.moveTo({0, 0});
    wish_.minimize(true);
    EXPECT_FALSE(wish_.correct(window({500, 40, 320, 240})));
    EXPECT_TRUE(wish_.isUnderWay(window({500, 40, 320, 240})));
}

}  // namespace
}  // namespace orvel::x11
