#include "platform/event_tap.hpp"

#include "platform/essentials.hpp"
#include "platform/event_poster.hpp"
#include "platform/input_state.hpp"
#include "platform/macos/mac_factories.hpp"
#include "tests/macos/run/mac_test.hpp"

namespace orvel::macos {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr EventMask kEngineMask = 0x6405C00;
constexpr int kKeyDown = 10, kKeyUp = 11, kFlagsChanged = 12;

class MacEventTapTest : public MacTest {
protected:
    EventTapRequest request{.mask = kEngineMask};
    LogLines log;
    std::unique_ptr<EventPoster> poster = makeEventPoster();
    std::unique_ptr<InputState> input = makeInputState();
    std::unique_ptr<EventTap> tap = makeEventTap(*poster, *input, log);
    std::vector<Event> heard;

    void TearDown() override {
        tap.reset();
        MacTest::TearDown();
    }

    void start(EventHandler decide) {
        ASSERT_TRUE(tap->create(request, [this, decide = std::move(decide)](Event& event) {
            heard.push_back(event);
            return decide(event);
        }));
        tap->enable();
    }
    void startWith(EventVerdict verdict) {
        start([verdict](Event&) { return verdict; });
    }
    /// Home is typed where Left is pressed.
    void startWithLeftAsHome() {
        start([](Event& event) {
            if (event.keyCode != key::leftArrow) return EventVerdict::pass;
            event.keyCode = key::home;
            return EventVerdict::modify;
        });
    }
    static void notice(const std::string& name, fake::Center center = fake::Center::workspace) {
        fake::postNotification(center, name);
    }
};

TEST_F(MacEventTapTest, SitsAtTheHeadOfTheSessionWithExactlyTheMaskAskedFor) {
    startWith(EventVerdict::pass);
    ASSERT_THAT(fake::taps(), SizeIs(1));
    const fake::TapInfo made = fake::taps().front();
    EXPECT_EQ(made.location, 1);
    EXPECT_EQ(made.placement, 0);
    EXPECT_EQ(made.options, 0);
    EXPECT_EQ(made.mask, 0x6405C00U);
}

TEST_F(MacEventTapTest, DeliversNothingBeforeItIsEnabled) {
    ASSERT_TRUE(tap->create(request, [](Event&) { return EventVerdict::swallow; }));
    EXPECT_TRUE(tap->exists());
    EXPECT_FALSE(tap->isEnabled());
    EXPECT_TRUE(fake::sendKey({.keyCode = 0}));
    tap->enable();
    EXPECT_TRUE(tap->isEnabled());
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}));
}

TEST_F(MacEventTapTest, LeavesNothingBehindWhenTheSystemRefuses) {
    mac().session.isTrusted = false;
    EXPECT_FALSE(tap->create(request, [](Event&) { return EventVerdict::pass; }));
    EXPECT_FALSE(tap->exists());
    EXPECT_FALSE(tap->isEnabled());
    EXPECT_THAT(fake::taps(), IsEmpty());
}

TEST_F(MacEventTapTest, HearsKeysAlsoWhileAMenuIsTracked) {
    startWith(EventVerdict::swallow);
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}, fake::Mode::tracking));
}

TEST_F(MacEventTapTest, TellsTheHandlerEverythingAboutAKey) {
    startWith(EventVerdict::pass);
    fake::sendKey({.type = kKeyDown,
                   .keyCode = 123,
                   .flags = 0xA00000,
                   .userData = 42,
                   .isAutorepeat = true});
    EXPECT_THAT(heard, ElementsAre(Event{.type = EventType::keyDown,
                                         .keyCode = 123,
                                         .flags = 0xA00000,
                                         .isAutorepeat = true,
                                         .userData = 42}));
}

TEST_F(MacEventTapTest, TellsButtonsWheelAndSystemEventsApart) {
    startWith(EventVerdict::pass);
    fake::sendButton(25, 3);
    fake::sendWheel({.lines = -2, .pixels = -20});
    fake::sendWheel({.lines = 1, .pixels = 7, .isPrecise = true, .isContinuous = true});
    fake::sendSystemDefined();
    EXPECT_THAT(
        heard,
        ElementsAre(Event{.type = EventType::otherMouseDown, .buttonNumber = 3},
                    Event{.type = EventType::scrollWheel, .deltaAxis1 = -2, .pointDeltaAxis1 = -20},
                    Event{.type = EventType::scrollWheel,
                          .deltaAxis1 = 1,
                          .pointDeltaAxis1 = 7,
                          .hasPreciseScrollingDeltas = true},
                    Event{.type = EventType::systemDefined}));
}

TEST_F(MacEventTapTest, AContinuousDeviceWithoutPreciseDeltasIsAWheel) {
    startWith(EventVerdict::pass);
    fake::sendWheel({.lines = 1, .pixels = 10, .isContinuous = true});
    ASSERT_THAT(heard, SizeIs(1));
    EXPECT_FALSE(heard.front().hasPreciseScrollingDeltas);
}

TEST_F(MacEventTapTest, ASwallowedKeyReachesNobody) {
    startWith(EventVerdict::swallow);
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}));
}

TEST_F(MacEventTapTest, ARewrittenKeyKeepsItsMark) {
    start([](Event& event) {
        event.keyCode = key::o;
        event.flags = flag::command;
        return EventVerdict::modify;
    });
    const auto left = fake::sendKey({.keyCode = 36, .flags = 0x100, .userData = 7});
    ASSERT_TRUE(left);
    EXPECT_EQ(left->keyCode, 31);
    EXPECT_EQ(left->flags, 0x100000U);
    EXPECT_EQ(left->userData, 7);
}

TEST_F(MacEventTapTest, ATurnedWheelHasBothDeltasTurned) {
    start([](Event& event) {
        event.deltaAxis1 = -event.deltaAxis1;
        event.pointDeltaAxis1 = -event.pointDeltaAxis1;
        return EventVerdict::modify;
    });
    const auto left = fake::sendWheel({.lines = 3, .pixels = 25});
    ASSERT_TRUE(left);
    EXPECT_EQ(left->lines, -3);
    EXPECT_EQ(left->pixels, -25);
}

TEST_F(MacEventTapTest, ChangesThatTheHandlerDidNotAnnounceAreNotMade) {
    start([](Event& event) {
        event.keyCode = key::o;
        return EventVerdict::pass;
    });
    EXPECT_EQ(fake::sendKey({.keyCode = 36})->keyCode, 36);
}

TEST_F(MacEventTapTest, ARewrittenKeyIsHeldAndReleasedAsWhatItBecameWhenTheEngineLooksAway) {
    bool isPaused = false;
    start([&](Event& event) {
        if (isPaused) return EventVerdict::pass;
        event.keyCode = key::home;
        return EventVerdict::modify;
    });
    fake::sendKey({.type = kKeyDown, .keyCode = 123});
    isPaused = true;
    EXPECT_EQ(fake::sendKey({.type = kKeyDown, .keyCode = 123, .isAutorepeat = true})->keyCode,
              115);
    EXPECT_EQ(fake::sendKey({.type = kKeyUp, .keyCode = 123, .userData = 42})->keyCode, 123)
        << "our own event of the same key";
    EXPECT_EQ(fake::sendKey({.type = kKeyUp, .keyCode = 123})->keyCode, 115);
    EXPECT_EQ(fake::sendKey({.type = kKeyDown, .keyCode = 123})->keyCode, 123);
    EXPECT_EQ(fake::sendKey({.type = kKeyUp, .keyCode = 123})->keyCode, 123);
}

TEST_F(MacEventTapTest, ComesBackAtOnceWhenATimeOutSwitchedItOff) {
    startWith(EventVerdict::swallow);
    fake::switchTapsOff(fake::SwitchOff::timeout);
    EXPECT_TRUE(tap->isEnabled());
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}));
}

TEST_F(MacEventTapTest, WaitsWhenItIsSwitchedOffAgainWithinAMoment) {
    startWith(EventVerdict::swallow);
    fake::switchTapsOff(fake::SwitchOff::userInput);
    fake::switchTapsOff(fake::SwitchOff::userInput);
    EXPECT_FALSE(tap->isEnabled());
    tap->enable();
    EXPECT_TRUE(tap->isEnabled());
}

TEST_F(MacEventTapTest, SaysThatItIsOffWhenNobodyTold) {
    startWith(EventVerdict::pass);
    fake::switchTapsOff(fake::SwitchOff::silently);
    EXPECT_FALSE(tap->isEnabled());
    EXPECT_TRUE(tap->exists());
}

TEST_F(MacEventTapTest, IsOnAgainAfterTheSystemOrItsScreensWake) {
    for (const char* name :
         {"NSWorkspaceDidWakeNotification", "NSWorkspaceScreensDidWakeNotification"}) {
        startWith(EventVerdict::pass);
        fake::switchTapsOff(fake::SwitchOff::silently);
        notice(name);
        EXPECT_TRUE(tap->isEnabled()) << name;
    }
}

TEST_F(MacEventTapTest, FiftyStartsLeaveOneTapInTheSystem) {
    for (int i = 0; i < 50; ++i) startWith(EventVerdict::pass);
    EXPECT_THAT(fake::taps(), SizeIs(1));
    tap.reset();
    EXPECT_THAT(fake::taps(), IsEmpty());
    EXPECT_EQ(fake::liveTimers(), 0);
}

TEST_F(MacEventTapTest, ARevokedPermissionIsNoticedWithinASecondAndTheTapDropped) {
    startWith(EventVerdict::pass);
    mac().session.isTrusted = false;
    fake::advance(1s);
    EXPECT_FALSE(tap->exists());
    EXPECT_THAT(fake::taps(), IsEmpty());
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("权限已被收回")));
}

TEST_F(MacEventTapTest, BeingTakenOutOfTheListIsNoticedAlthoughTheQuickAnswerIsStale) {
    startWith(EventVerdict::pass);
    mac().session.isTrusted = false;
    mac().session.trustIsStale = true;
    notice("com.apple.accessibility.api", fake::Center::distributed);
    EXPECT_FALSE(tap->exists());
    EXPECT_THAT(fake::taps(), IsEmpty());
    EXPECT_THAT(log.lines, SizeIs(1));
}

TEST_F(MacEventTapTest, LooksThatAskTheSystemAnewLeaveNoTapBehind) {
    startWith(EventVerdict::pass);
    for (int i = 0; i < 20; ++i) {
        notice("com.apple.accessibility.api", fake::Center::distributed);
    }
    EXPECT_THAT(fake::taps(), SizeIs(1));
    EXPECT_TRUE(tap->isEnabled());
}

TEST_F(MacEventTapTest, SwitchedOffWithoutPermissionItIsDroppedAndNotFoughtFor) {
    startWith(EventVerdict::pass);
    mac().session.isTrusted = false;
    fake::switchTapsOff(fake::SwitchOff::userInput);
    EXPECT_FALSE(tap->exists());
    EXPECT_THAT(fake::taps(), IsEmpty());
}

TEST_F(MacEventTapTest, CanBeMadeAnewAfterThePermissionCameBack) {
    startWith(EventVerdict::pass);
    mac().session.isTrusted = false;
    fake::advance(1s);
    mac().session.isTrusted = true;
    startWith(EventVerdict::swallow);
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}));
    mac().session.isTrusted = false;
    fake::advance(1s);
    EXPECT_FALSE(tap->exists());
}

TEST_F(MacEventTapTest, ASessionInTheBackgroundGivesItsTapBack) {
    startWith(EventVerdict::swallow);
    mac().session.isOnConsole = false;
    notice("NSWorkspaceSessionDidResignActiveNotification");
    EXPECT_THAT(fake::taps(), IsEmpty());
    // For its owner nothing is wrong with it.
    EXPECT_TRUE(tap->exists());
    EXPECT_TRUE(tap->isEnabled());
    mac().session.isOnConsole = true;
    notice("NSWorkspaceSessionDidBecomeActiveNotification");
    ASSERT_THAT(fake::taps(), SizeIs(1));
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}));
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(MacEventTapTest, NoticesOfTheSessionMayComeTwiceAndOutOfOrder) {
    startWith(EventVerdict::pass);
    mac().session.isOnConsole = false;
    for (int i = 0; i < 2; ++i) notice("NSWorkspaceSessionDidResignActiveNotification");
    // A late notice of an earlier time says the opposite of what is true.
    notice("NSWorkspaceSessionDidBecomeActiveNotification");
    EXPECT_THAT(fake::taps(), IsEmpty());
    mac().session.isOnConsole = true;
    for (int i = 0; i < 2; ++i) notice("NSWorkspaceSessionDidBecomeActiveNotification");
    notice("NSWorkspaceSessionDidResignActiveNotification");
    EXPECT_THAT(fake::taps(), SizeIs(1));
    EXPECT_TRUE(tap->isEnabled());
}

TEST_F(MacEventTapTest, StaysDisabledThroughASwitchOfSessionsWhenItWasNotEnabled) {
    ASSERT_TRUE(tap->create(request, [](Event&) { return EventVerdict::pass; }));
    mac().session.isOnConsole = false;
    notice("NSWorkspaceSessionDidResignActiveNotification");
    EXPECT_FALSE(tap->isEnabled());
    mac().session.isOnConsole = true;
    notice("NSWorkspaceSessionDidBecomeActiveNotification");
    EXPECT_FALSE(tap->isEnabled());
}

TEST_F(MacEventTapTest, WhatIsTypedIntoTheLockScreenIsNotHeard) {
    startWith(EventVerdict::swallow);
    mac().session.isLocked = true;
    notice("com.apple.screenIsLocked", fake::Center::distributed);
    EXPECT_TRUE(fake::sendKey({.keyCode = 0}));
    EXPECT_THAT(heard, IsEmpty());
    mac().session.isLocked = false;
    notice("com.apple.screenIsUnlocked", fake::Center::distributed);
    EXPECT_FALSE(fake::sendKey({.keyCode = 0}));
}

TEST_F(MacEventTapTest, LetsGoOfRewrittenKeysWhenSecureInputBegins) {
    startWithLeftAsHome();
    fake::sendKey({.type = kKeyDown, .keyCode = 123});
    fake::sendKey({.type = kKeyDown, .keyCode = 0});
    mac().session.isSecureInput = true;
    mac().hidFlags = 0x20000;
    fake::advance(1s);
    EXPECT_THAT(
        mac().posted,
        ElementsAre(fake::PostedEvent{.type = kKeyUp, .keyCode = 115, .userData = 42},
                    fake::PostedEvent{
                        .type = kFlagsChanged, .keyCode = 55, .flags = 0x20000, .userData = 42}));
    fake::advance(5s);
    EXPECT_THAT(mac().posted, SizeIs(2));
}

TEST_F(MacEventTapTest, AKeyThatWasReleasedBeforeSecureInputIsLeftAlone) {
    startWithLeftAsHome();
    fake::sendKey({.type = kKeyDown, .keyCode = 123});
    fake::sendKey({.type = kKeyUp, .keyCode = 123});
    mac().session.isSecureInput = true;
    fake::advance(1s);
    EXPECT_THAT(mac().posted, IsEmpty());
}

TEST_F(MacEventTapTest, AKeyWhoseReleaseWasSleptThroughIsLetGoOnWaking) {
    startWithLeftAsHome();
    fake::sendKey({.type = kKeyDown, .keyCode = 123});
    mac().keysDown = {123};
    notice("NSWorkspaceDidWakeNotification");
    EXPECT_THAT(mac().posted, IsEmpty());
    mac().keysDown = {};
    notice("NSWorkspaceDidWakeNotification");
    ASSERT_THAT(mac().posted, SizeIs(2));
    EXPECT_EQ(mac().posted.front().keyCode, 115);
}

TEST_F(MacEventTapTest, NamesTheProgramThatKeepsSecureInputOn) {
    startWith(EventVerdict::pass);
    mac().applications[77] = {.name = "Vault"};
    mac().session.isSecureInput = true;
    mac().session.secureInputOwner = 77;
    fake::advance(20s);
    EXPECT_THAT(log.lines, IsEmpty());
    fake::advance(20s);
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Vault (PID 77)")));
    fake::advance(60s);
    EXPECT_THAT(log.lines, SizeIs(1));
}

TEST_F(MacEventTapTest, EssentialIsThePermissionAndThenThatItHasAnEffect) {
    const std::unique_ptr<Essentials> essentials = makeEssentials(*tap);
    mac().session.isTrusted = false;
    EXPECT_THAT(essentials->check(),
                ElementsAre(EssentialFinding{Essential::accessibilityPermission, false}));
    mac().session.isTrusted = true;
    EXPECT_THAT(essentials->check(),
                ElementsAre(EssentialFinding{Essential::accessibilityPermission, true},
                            EssentialFinding{Essential::effectivePermission, false}));
    startWith(EventVerdict::pass);
    EXPECT_THAT(essentials->check(),
                ElementsAre(EssentialFinding{Essential::accessibilityPermission, true},
                            EssentialFinding{Essential::effectivePermission, true}));
}

}  // namespace
}  // namespace orvel::macos
