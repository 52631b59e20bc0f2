#pragma once

#include "platform/screens.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What every list of screens does. `Harness`:
///     Screens& screens();   a desktop with at least one screen
template <typename Harness>
class ScreensContract : public ::testing::Test {
protected:
    Harness harness;
};

TYPED_TEST_SUITE_P(ScreensContract);

TYPED_TEST_P(ScreensContract, PutsTheMainScreenAtTheOriginAndFirst) {
    const auto screens = this->harness.screens().screens();
    ASSERT_FALSE(screens.empty());
    EXPECT_EQ(screens.front().frame.origin(), ScreenPoint{});
    EXPECT_GT(screens.front().frame.width, 0);
    EXPECT_GT(screens.front().frame.height, 0);
}

TYPED_TEST_P(ScreensContract, KeepsVisibleFramesInsideTheirScreens) {
    for (const Screen& screen : this->harness.screens().screens()) {
        EXPECT_GE(screen.visibleFrame.minX(), screen.frame.minX());
        EXPECT_GE(screen.visibleFrame.minY(), screen.frame.minY());
        EXPECT_LE(screen.visibleFrame.maxX(), screen.frame.maxX());
        EXPECT_LE(screen.visibleFrame.maxY(), screen.frame.maxY());
    }
}

REGISTER_TYPED_TEST_SUITE_P(ScreensContract, PutsTheMainScreenAtTheOriginAndFirst,
                            KeepsVisibleFramesInsideTheirScreens);

}  // namespace orvel::contract
