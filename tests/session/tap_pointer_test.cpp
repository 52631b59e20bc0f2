#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"

#include <algorithm>

namespace orvel::test {
namespace {

using rig::Button;
using rig::KeyProbe;
using rig::ProbeEvent;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = ProbeEvent::Kind;

/// What an application saw of buttons and scroll axes: "+1", "-1", "scroll 0.5".
std::vector<std::string> pointed(const KeyProbe::Events& events) {
    std::vector<std::string> texts;
    for (const ProbeEvent& event : events) {
        std::ostringstream text;
        if (event.kind == Kind::buttonPress) text << '+' << event.detail;
        if (event.kind == Kind::buttonRelease) text << '-' << event.detail;
        if (event.kind == Kind::scroll) text << "scroll " << event.down;
        if (!text.str().empty()) texts.push_back(text.str());
    }
    return texts;
}

class TapPointerTest : public TapSessionTest {
protected:
    static void putPointerInto(KeyProbe& probe) {
        state().warpPointer({probe.centreX(), probe.centreY()});
        probe.clear();
    }
};

TEST_F(TapPointerTest, LeftAndRightClicksAndMotionAreLeftAlone) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    mouse().click(Button::left);
    mouse().click(Button::right);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(4)), ElementsAre("+1", "-1", "+3", "-3"));
    EXPECT_THAT(tap.events(), IsEmpty());
    const rig::ScreenPoint from = state().pointer();
    mouse().move(30, -20);
    EXPECT_EQ(state().pointer(), (rig::ScreenPoint{from.x + 30, from.y - 20}));
}

TEST_F(TapPointerTest, AMiddleOrSideClickThatPassesArrivesOnce) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    mouse().click(Button::middle);
    mouse().click(Button::back);
    mouse().click(Button::forward);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(6)),
                ElementsAre("+2", "-2", "+8", "-8", "+9", "-9"));
    EXPECT_THAT(tap.events(),
                ElementsAre(testing::HasSubstr("event 25 key 0 flags 0 button 2"),
                            testing::HasSubstr("button 3"), testing::HasSubstr("button 4")));
}

TEST_F(TapPointerTest, ASideButtonThatPostsAShortcutDoesNotArriveItself) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap({"post", "1003", "33", std::to_string(0x100000)});
    probe.clear();
    mouse().click(Button::back);
    EXPECT_THAT(spelled(probe.waitForKeys(4)),
                ElementsAre("+Control_L", "+bracketleft", "-bracketleft", "-Control_L"));
    EXPECT_TRUE(eventually([&] { return tap.events(); }, SizeIs(2)));
    EXPECT_THAT(pointed(probe.drain()), IsEmpty());
}

TEST_F(TapPointerTest, AnotherClientsGrabOfThePointerKeepsWorking) {
    TapHost tap = startTap({"swallow", "1003"});
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    mouse().press(Button::left);
    mouse().click(Button::back);
    mouse().release(Button::left);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)), testing::IsSupersetOf({"+1", "-1"}));
}

TEST_F(TapPointerTest, TheWheelIsLeftAloneWhileNobodyWantsIt) {
    KeyProbe probe = startProbe(KeyProbe::Mode::smooth);
    putPointerInto(probe);
    TapHost tap = startTap();
    mouse().turnWheel(1);
    touchpad().scroll(0.125);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)),
                testing::IsSupersetOf({"scroll 1", "scroll 0.125"}));
    EXPECT_THAT(tap.events(), IsEmpty());
}

TEST_F(TapPointerTest, AReversedWheelTurnsTheOtherWayForOldClients) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    tap.tell("wheel on");
    mouse().turnWheelAsButtons(1);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)), ElementsAre("+4", "-4"));
    mouse().turnWheel(-1);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(4)), ElementsAre("+4", "-4", "+5", "-5"));
    tap.tell("wheel off");
    probe.clear();
    mouse().turnWheelAsButtons(1);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)), ElementsAre("+5", "-5"));
}

TEST_F(TapPointerTest, AWheelTurnedAroundAndBackManyTimesAlwaysTurnsAsItWasToldLast) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        const bool isReversed = round % 2 == 0;
        tap.tell(isReversed ? "wheel on" : "wheel off");
        probe.clear();
        round % 4 < 2 ? mouse().turnWheelAsButtons(1) : mouse().turnWheel(1);
        EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)),
                    isReversed ? ElementsAre("+4", "-4") : ElementsAre("+5", "-5"));
    }
}

TEST_F(TapPointerTest, AReversedWheelTurnsTheOtherWayForSmoothClients) {
    KeyProbe probe = startProbe(KeyProbe::Mode::smooth);
    putPointerInto(probe);
    TapHost tap = startTap();
    tap.tell("wheel on");
    mouse().turnWheel(1);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)), ElementsAre("+4", "-4"));
}

TEST_F(TapPointerTest, ATouchpadKeepsItsSmoothScrollingWhileWheelsAreReversed) {
    KeyProbe probe = startProbe(KeyProbe::Mode::smooth);
    putPointerInto(probe);
    TapHost tap = startTap();
    tap.tell("wheel on");
    touchpad().scroll(0.125);
    touchpad().scroll(-0.5);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)),
                ElementsAre("scroll 0.125", "scroll -0.5"));
    EXPECT_THAT(tap.events(), IsEmpty());
}

TEST_F(TapPointerTest, AMouseTakenWholeStillMovesAndClicks) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    tap.tell("wheel on");
    const rig::ScreenPoint from = state().pointer();
    mouse().move(30, -20);
    mouse().move(0.5, 0);
    mouse().move(0.5, 0);
    EXPECT_TRUE(
        eventually([] { return state().pointer(); }, rig::ScreenPoint{from.x + 31, from.y - 20}));
    mouse().click(Button::left);
    mouse().click(Button::middle);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(4)), ElementsAre("+1", "-1", "+2", "-2"));
    EXPECT_TRUE(eventually([&] { return tap.events(); }, SizeIs(2)));
}

TEST_F(TapPointerTest, AMouseTakenWholeReachesEveryCornerAndComesBack) {
    TapHost tap = startTap();
    tap.tell("wheel on");
    mouse().move(-5000, -5000);
    EXPECT_TRUE(eventually([] { return state().pointer(); }, rig::ScreenPoint{0, 0}));
    mouse().move(2, 1);
    EXPECT_TRUE(eventually([] { return state().pointer(); }, rig::ScreenPoint{2, 1}));
}

TEST_F(TapPointerTest, AButtonHeldWhenItsMouseIsTakenComesUp) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    mouse().press(Button::left);
    tap.tell("wheel on");
    mouse().release(Button::left);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)), ElementsAre("+1", "-1"));
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, IsEmpty()));
    mouse().click(Button::right);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(4)), ElementsAre("+1", "-1", "+3", "-3"));
}

TEST_F(TapPointerTest, AButtonHeldWhenTheTapDiesComesUp) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    tap.tell("wheel on");
    mouse().press(Button::left);
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, ElementsAre(1)));
    tap.process().signal(SIGKILL);
    mouse().release(Button::left);
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, IsEmpty()));
    EXPECT_TRUE(eventually([] { return hasTap(desktop().x()); }, false));
    probe.clear();
    mouse().click(Button::left);
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(2)), ElementsAre("+1", "-1"));
}

TEST_F(TapPointerTest, AMousePulledOutComesBackReversed) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    TapHost tap = startTap();
    tap.tell("wheel on");
    mouse().press(Button::left);
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, ElementsAre(1)));
    mouse().unplug();
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, IsEmpty()));
    mouse().plug();
    const auto turned = [&] {
        mouse().turnWheelAsButtons(1);
        return tap.events();
    };
    EXPECT_TRUE(eventually(turned, testing::Not(IsEmpty())));
    EXPECT_THAT(pointed(probe.waitForButtonsAndScrolls(4)), testing::Contains("+4"));
}

}  // namespace
}  // namespace orvel::test
