#include "platform/x11/root_layout.hpp"

#include <gtest/gtest.h>

namespace orvel::x11 {
namespace {

Monitor monitor(RootRect area, bool isPrimary = false) { return {area, isPrimary}; }

RootState oneMonitor() {
    RootState state;
    state.root = {0, 0, 1920, 1080};
    state.monitors = {monitor({0, 0, 1920, 1080}, true)};
    return state;
}

/// A primary monitor in the middle, one to its left and higher, one portrait to its right with a
/// gap between.
RootState threeMonitors() {
    RootState state;
    state.root = {0, 0, 5120, 2160};
    state.monitors = {monitor({0, 0, 1280, 1024}), monitor({1280, 500, 1920, 1080}, true),
                      monitor({3400, 0, 1080, 1920})};
    return state;
}

TEST(RootLayout, AxCoordinatesCountFromTheTopLeftOfTheMainScreen) {
    const auto layout = rootLayout(threeMonitors());
    EXPECT_EQ(layout.toAx(1280, 500), (AxPoint{0, 0}));
    EXPECT_EQ(layout.toAx(0, 0), (AxPoint{-1280, -500}));
}

TEST(RootLayout, ScreenCoordinatesCountUpwardsFromTheBottomLeftOfTheMainScreen) {
    const auto layout = rootLayout(threeMonitors());
    EXPECT_EQ(layout.toScreen(1280, 1580), (ScreenPoint{0, 0}));
    EXPECT_EQ(layout.toScreen(RootRect{1280, 500, 100, 40}), (ScreenRect{0, 1040, 100, 40}));
}

TEST(RootLayout, TurnsRectanglesBackIntoRootCoordinates) {
    const auto layout = rootLayout(threeMonitors());
    const RootRect rect{200, 300, 40, 50};
    EXPECT_EQ(layout.fromScreen(layout.toScreen(rect)), rect);
    EXPECT_EQ(layout.fromAx(layout.toAx(rect)), rect);
}

TEST(LayOutScreens, ThePrimaryMonitorComesFirst) {
    const auto screens = layOutScreens(threeMonitors());
    ASSERT_EQ(screens.size(), 3U);
    EXPECT_EQ(screens[0].frame, (ScreenRect{0, 0, 1920, 1080}));
    EXPECT_EQ(screens[1].frame, (ScreenRect{-1280, 556, 1280, 1024}));
    EXPECT_EQ(screens[2].frame, (ScreenRect{2120, -340, 1080, 1920}));
}

TEST(LayOutScreens, WithoutAPrimaryMonitorTheFirstIsTheMainScreen) {
    auto state = threeMonitors();
    state.monitors[1].isPrimary = false;
    EXPECT_EQ(layOutScreens(state).front().frame, (ScreenRect{0, 0, 1280, 1024}));
}

TEST(LayOutScreens, AMirroredMonitorCountsOnce) {
    auto state = oneMonitor();
    state.monitors.push_back(monitor({0, 0, 1920, 1080}));
    EXPECT_EQ(layOutScreens(state).size(), 1U);
}

TEST(LayOutScreens, ASwitchedOffMonitorIsNoScreen) {
    auto state = oneMonitor();
    state.monitors.push_back(monitor({0, 0, 0, 0}));
    EXPECT_EQ(layOutScreens(state).size(), 1U);
}

TEST(LayOutScreens, TheWorkAreaOfTheOnlyMonitorIsItsVisibleFrame) {
    auto state = oneMonitor();
    state.workArea = RootRect{0, 30, 1920, 1010};
    EXPECT_EQ(layOutScreens(state).front().visibleFrame, (ScreenRect{0, 40, 1920, 1010}));
}

TEST(LayOutScreens, AWorkAreaOutsideTheMonitorIsIgnored) {
    auto state = oneMonitor();
    state.workArea = RootRect{4000, 0, 100, 100};
    EXPECT_EQ(layOutScreens(state).front().visibleFrame, (ScreenRect{0, 0, 1920, 1080}));
}

TEST(LayOutScreens, AStrutCutsOnlyTheMonitorsThatItTouches) {
    auto state = threeMonitors();
    Strut top;
    top.top = 530;
    top.topStartX = 1280;
    top.topEndX = 3199;
    state.struts = {top};
    const auto screens = layOutScreens(state);
    EXPECT_EQ(screens[0].visibleFrame, (ScreenRect{0, 0, 1920, 1050}));
    EXPECT_EQ(screens[1].visibleFrame, screens[1].frame);
    EXPECT_EQ(screens[2].visibleFrame, screens[2].frame);
}

TEST(LayOutScreens, ABottomStrutReachesTheMonitorWhereItsBandBegins) {
    auto state = threeMonitors();
    Strut bottom;
    bottom.bottom = 2160 - 1540;
    bottom.bottomStartX = 1280;
    bottom.bottomEndX = 3199;
    state.struts = {bottom};
    const auto screens = layOutScreens(state);
    EXPECT_EQ(screens[0].visibleFrame, (ScreenRect{0, 40, 1920, 1040}));
    EXPECT_EQ(screens[1].visibleFrame, screens[1].frame);
}

TEST(LayOutScreens, AStrutThatWouldLeaveNothingIsIgnored) {
    auto state = threeMonitors();
    Strut left;
    left.left = 5120;
    left.leftEndY = 2160;
    Strut absurd;
    absurd.top = 2160;
    absurd.topEndX = 5120;
    state.struts = {left, absurd};
    for (const auto& screen : layOutScreens(state)) EXPECT_EQ(screen.visibleFrame, screen.frame);
}

TEST(LayOutScreens, WithoutMonitorsThereIsNoScreen) {
    EXPECT_TRUE(layOutScreens(RootState{}).empty());
}

}  // namespace
}  // namespace orvel::x11
