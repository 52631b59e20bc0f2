#include "engine/snapping/snap_geometry.hpp"

#include <gtest/gtest.h>

namespace orvel::test {
namespace {

const Screen kScreen{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 875}};

struct Step {
    SnapDirection direction;
    WindowSnapState state;
    SnapStep::Kind kind;
    bool savesFrame;
};

TEST(SnapStep, FollowsTheTableOfDirectionsAndStates) {
    using enum SnapDirection;
    using State = WindowSnapState;
    using Kind = SnapStep::Kind;
    constexpr Step steps[] = {
        {left, State::unsnapped, Kind::snap, true},
        {left, State::left, Kind::snap, false},
        {left, State::right, Kind::restore, false},
        {left, State::maximized, Kind::snap, false},
        {right, State::unsnapped, Kind::snap, true},
        {right, State::left, Kind::restore, false},
        {right, State::right, Kind::snap, false},
        {right, State::maximized, Kind::snap, false},
        {up, State::unsnapped, Kind::snap, true},
        {up, State::left, Kind::snap, false},
        {up, State::right, Kind::snap, false},
        {up, State::maximized, Kind::snap, false},
        {down, State::unsnapped, Kind::minimize, false},
        {down, State::left, Kind::restore, false},
        {down, State::right, Kind::restore, false},
        {down, State::maximized, Kind::restore, false},
    };
    for (const Step& step : steps) {
        const SnapStep taken = snapStep(step.direction, step.state);
        EXPECT_EQ(taken.kind, step.kind);
        EXPECT_EQ(taken.savesFrame, step.savesFrame);
    }
}

TEST(SnapArea, ReachesTheBottomOfTheScreenWithoutTheTaskbar) {
    const SnapArea area = snapArea(kScreen, SnapDirection::left, false);
    EXPECT_EQ(area.corner, (AxPoint{0, 25}));
    EXPECT_EQ(area.requestedSize, (Size{720, 875}));
}

TEST(SnapArea, StopsAboveTheTaskbar) {
    EXPECT_EQ(snapArea(kScreen, SnapDirection::up, true).requestedSize, (Size{1440, 825}));
}

TEST(SnapArea, IgnoresTheSpaceOfADockAtTheBottom) {
    const Screen docked{.frame = {0, 0, 1920, 1080}, .visibleFrame = {0, 70, 1920, 985}};
    EXPECT_EQ(snapArea(docked, SnapDirection::right, false).requestedSize, (Size{960, 1055}));
}

TEST(SnapArea, EndsAWindowThatIsTooWideFlushRight) {
    const SnapArea area = snapArea(kScreen, SnapDirection::right, false);
    EXPECT_EQ(area.leftEdge(SnapDirection::right, 900), 540);
    EXPECT_EQ(area.leftEdge(SnapDirection::right, 720), 720);
    EXPECT_EQ(area.leftEdge(SnapDirection::left, 900), 0);
}

TEST(SnapArea, CentresAMaximisedWindowThatStaysNarrow) {
    EXPECT_EQ(snapArea(kScreen, SnapDirection::up, false).leftEdge(SnapDirection::up, 1000), 220);
}

TEST(SnapArea, KeepsPortraitScreensAndOffsetsExact) {
    const Screen portrait{.frame = {0, 0, 1080, 1920}, .visibleFrame = {60, 0, 1020, 1895}};
    const SnapArea area = snapArea(portrait, SnapDirection::right, false);
    EXPECT_EQ(area.corner, (AxPoint{60, 25}));
    EXPECT_EQ(area.requestedSize, (Size{510, 1895}));
    EXPECT_EQ(area.leftEdge(SnapDirection::right, 510), 570);
}

}  // namespace
}  // namespace orvel::test
