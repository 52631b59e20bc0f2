#include "platform/x11/button_path.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace orvel::x11::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Clicks = std::vector<std::pair<XButton, bool>>;

constexpr int kMouse = 7;

class ButtonPathTest : public testing::Test {
protected:
    void answer(EventVerdict verdict) {
        path.setHandler([this, verdict](Event& event) {
            seen.push_back(event);
            return verdict;
        });
    }
    Clicks taken() { return std::exchange(sent, {}); }

    HidState state;
    Clicks sent;
    std::vector<Event> seen;
    ButtonPath path{state, [this](XButton number, bool down) { sent.emplace_back(number, down); }};
};

TEST_F(ButtonPathTest, SideButtonsHaveTheirNumbersOfAMac) {
    EXPECT_EQ(buttonNumberOf(button::middle), 2);
    EXPECT_EQ(buttonNumberOf(button::back), 3);
    EXPECT_EQ(buttonNumberOf(button::forward), 4);
    for (const XButton number : {1, 2, 3, 8, 9, 10, 12}) {
        EXPECT_EQ(xButtonOf(buttonNumberOf(number)), number);
    }
}

TEST_F(ButtonPathTest, APassedPressIsLetGo) {
    answer(EventVerdict::pass);
    state.press({6, 50}, key::leftShift);
    EXPECT_TRUE(path.letsGo(button::middle));
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].type, EventType::otherMouseDown);
    EXPECT_EQ(seen[0].buttonNumber, 2);
    EXPECT_EQ(seen[0].flags, flag::shift);
}

TEST_F(ButtonPathTest, ASwallowedPressTakesItsReleaseWithIt) {
    answer(EventVerdict::swallow);
    EXPECT_FALSE(path.letsGo(button::back));
    path.setHandler({});
    path.endHeld(button::back);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(ButtonPathTest, ARewrittenButtonLeavesRewrittenWithItsRelease) {
    path.setHandler([](Event& event) {
        event.buttonNumber = 4;
        return EventVerdict::modify;
    });
    EXPECT_FALSE(path.letsGo(button::back));
    path.setHandler({});
    path.endHeld(button::back);
    EXPECT_THAT(taken(), ElementsAre(std::pair(9, true), std::pair(9, false)));
}

TEST_F(ButtonPathTest, OfAWholePointerLeftAndRightAreNotTapped) {
    answer(EventVerdict::swallow);
    path.press(kMouse, button::left);
    path.release(kMouse, button::left);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_THAT(taken(), ElementsAre(std::pair(1, true), std::pair(1, false)));
}

TEST_F(ButtonPathTest, EachNotchOfTheWheelIsOneEvent) {
    answer(EventVerdict::pass);
    path.press(kMouse, button::wheelDown);
    path.release(kMouse, button::wheelDown);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].type, EventType::scrollWheel);
    EXPECT_EQ(seen[0].deltaAxis1, -1);
    EXPECT_EQ(seen[0].pointDeltaAxis1, -10);
    EXPECT_FALSE(seen[0].hasPreciseScrollingDeltas);
    EXPECT_THAT(taken(), ElementsAre(std::pair(5, true), std::pair(5, false)));
}

TEST_F(ButtonPathTest, AReversedWheelTurnsTheOtherWay) {
    path.setHandler([](Event& event) {
        event.deltaAxis1 = -event.deltaAxis1;
        return EventVerdict::modify;
    });
    path.press(kMouse, button::wheelUp);
    path.release(kMouse, button::wheelUp);
    EXPECT_THAT(taken(), ElementsAre(std::pair(5, true), std::pair(5, false)));
}

TEST_F(ButtonPathTest, TheHorizontalWheelIsLeftAlone) {
    answer(EventVerdict::swallow);
    path.press(kMouse, button::wheelLeft);
    path.release(kMouse, button::wheelLeft);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_THAT(taken(), ElementsAre(std::pair(6, true), std::pair(6, false)));
}

TEST_F(ButtonPathTest, AnUnpluggedMouseReleasesItsButtons) {
    path.press(kMouse, button::left);
    path.press(kMouse + 1, button::right);
    taken();
    path.releaseDevice(kMouse);
    EXPECT_THAT(taken(), ElementsAre(std::pair(1, false)));
}

TEST_F(ButtonPathTest, AReleaseWithoutAPressLeavesNothing) {
    path.release(kMouse, button::left);
    EXPECT_THAT(taken(), IsEmpty());
}

}  // namespace
}  // namespace orvel::x11::test
