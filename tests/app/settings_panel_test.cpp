#include "app/settings_panel.hpp"

#include <gtest/gtest.h>

namespace orvel {
namespace {

constexpr ScreenRect kVisible{0, 0, 1440, 875};

TEST(SettingsPanelFrame, IsCentredEightPointsBelowTheButton) {
    EXPECT_EQ(settingsPanelFrame({600, 875, 30, 25}, kVisible), (ScreenRect{440, 317, 350, 550}));
}

TEST(SettingsPanelFrame, KeepsTenPointsToTheRightEdgeOfTheVisibleFrame) {
    EXPECT_EQ(settingsPanelFrame({1400, 875, 30, 25}, kVisible).maxX(), 1430);
}

TEST(SettingsPanelFrame, StaysCentredWhenItJustReachesTheMargin) {
    EXPECT_EQ(settingsPanelFrame({1240, 875, 30, 25}, kVisible).x, 1080);
}

TEST(SettingsPanelFrame, IsNotMovedAtTheLeftEdge) {
    EXPECT_EQ(settingsPanelFrame({0, 875, 30, 25}, kVisible).x, -160);
}

TEST(SettingsPanelFrame, IsNotMovedWithoutAScreen) {
    EXPECT_EQ(settingsPanelFrame({1400, 875, 30, 25}, std::nullopt).x, 1240);
}

TEST(SettingsPanelFrame, FollowsTheEdgeOfAScreenOnTheLeft) {
    const ScreenRect leftScreen{-1920, 0, 1920, 1055};
    EXPECT_EQ(settingsPanelFrame({-40, 1055, 30, 25}, leftScreen).x, -360);
}

}  // namespace
}  // namespace orvel
