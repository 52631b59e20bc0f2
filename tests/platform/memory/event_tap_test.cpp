#include "platform/memory/memory_event_tap.hpp"
#include "tests/support/effect_matchers.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel::memory {
namespace {

using namespace orvel::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MemoryEventTapTest : public MemoryFixture {
protected:
    void tap(EventHandler handler) {
        ASSERT_TRUE(desk.eventTap.create({.mask = ~EventMask{0}}, std::move(handler)));
        desk.eventTap.enable();
        lookAway();
    }
    void tapWith(EventVerdict verdict) {
        tap([verdict](Event&) { return verdict; });
    }
};

TEST_F(MemoryEventTapTest, TellsOfItsCreationAlsoWhenRefused) {
    desk.world.canCreateTap = false;
    EXPECT_FALSE(
        desk.eventTap.create({.mask = 0x6405C00}, [](Event&) { return EventVerdict::pass; }));
    EXPECT_FALSE(desk.eventTap.exists());
    desk.eventTap.enable();
    EXPECT_THAT(effects(),
                ElementsAre(R"({"tap":{"create":{"location":1,"placement":0,"options":0,)"
                            R"("mask":104881152}}})"));
}

TEST_F(MemoryEventTapTest, EventsWithoutAnEnabledTapAreUntapped) {
    press(key::a);
    ASSERT_TRUE(desk.eventTap.create({.mask = ~EventMask{0}},
                                     [](Event&) { return EventVerdict::swallow; }));
    lookAway();
    press(key::a);
    EXPECT_THAT(effects(), ElementsAre(untapped()));
    desk.eventTap.enable();
    EXPECT_THAT(effects(), ElementsAre(R"({"tap":{"enable":true}})"));
    press(key::a);
    EXPECT_THAT(effects(), ElementsAre(swallowed()));
}

TEST_F(MemoryEventTapTest, TheDesktopMaySwitchTheTapOff) {
    tapWith(EventVerdict::swallow);
    desk.eventTap.switchFromOutside(false);
    EXPECT_FALSE(desk.eventTap.isEnabled());
    press(key::a);
    desk.eventTap.enable();
    press(key::a);
    EXPECT_THAT(effects(), ElementsAre(untapped(), R"({"tap":{"enable":true}})", swallowed()));
}

TEST_F(MemoryEventTapTest, ARewrittenKeyShowsItsNewCodeAndFlags) {
    tap([](Event& event) {
        event.keyCode = key::o;
        event.flags = flag::command;
        return EventVerdict::modify;
    });
    press(key::returnKey);
    send(flagsChanged(key::leftControl, flag::control));
    EXPECT_THAT(effects(), ElementsAre(modified(31, 0x100000), modified(31, 0x100000)));
}

TEST_F(MemoryEventTapTest, ARewriteThatChangesNothingIsAPass) {
    tapWith(EventVerdict::modify);
    press(key::a, flag::shift);
    EXPECT_THAT(effects(), ElementsAre(passed()));
}

TEST_F(MemoryEventTapTest, ARewrittenWheelShowsItsDeltasAlsoWhenBothAreZero) {
    tap([](Event& event) {
        event.deltaAxis1 = -event.deltaAxis1;
        event.pointDeltaAxis1 = -event.pointDeltaAxis1;
        return EventVerdict::modify;
    });
    send(wheel(3, 30));
    send(wheel(0, 0));
    EXPECT_THAT(effects(), ElementsAre(scrolled(-3, -30), scrolled(0, 0)));
}

TEST_F(MemoryEventTapTest, WhatTheHandlerDoesAtOnceStandsBeforeTheDecision) {
    tap([this](Event&) {
        desk.log.line("at once");
        desk.runLoop.post([this] { desk.log.line("queued"); });
        return EventVerdict::pass;
    });
    press(key::a);
    EXPECT_THAT(effects(), ElementsAre(logged("at once"), passed(), logged("queued")));
}

TEST_F(MemoryEventTapTest, ModifierFlagsAndHeldKeysFollowTheEvents) {
    send(flagsChanged(key::fn, flag::secondaryFn));
    press(key::a);
    EXPECT_EQ(desk.inputState.hidFlags(), flag::secondaryFn);
    EXPECT_TRUE(desk.inputState.isKeyDown(key::fn));
    EXPECT_TRUE(desk.inputState.isKeyDown(key::a));
    release(key::a);
    send(flagsChanged(key::fn, flag::none));
    EXPECT_EQ(desk.inputState.hidFlags(), flag::none);
    EXPECT_FALSE(desk.inputState.isKeyDown(key::fn));
    EXPECT_FALSE(desk.inputState.isKeyDown(key::a));
}

TEST_F(MemoryEventTapTest, TheStateIsThereWhenTheHandlerRuns) {
    EventFlags seen = 0;
    tap([&](Event&) {
        seen = desk.inputState.hidFlags();
        return EventVerdict::pass;
    });
    send(flagsChanged(key::capsLock, flag::capsLock));
    EXPECT_EQ(seen, flag::capsLock);
}

TEST_F(MemoryEventTapTest, PinnedStateFollowsNoEvents) {
    desk.world.isHidFlagsPinned = true;
    desk.world.isKeysDownPinned = true;
    send(flagsChanged(key::leftShift, flag::shift));
    press(key::a);
    EXPECT_EQ(desk.inputState.hidFlags(), flag::none);
    EXPECT_FALSE(desk.inputState.isKeyDown(key::leftShift));
    EXPECT_FALSE(desk.inputState.isKeyDown(key::a));
}

TEST_F(MemoryEventTapTest, PostedEventsDoNotComeBack) {
    tapWith(EventVerdict::swallow);
    const PostedKey keys[] = {
        {.type = EventType::keyDown, .keyCode = key::v, .flags = flag::command},
        {.type = EventType::keyUp, .keyCode = key::v, .flags = std::nullopt}};
    desk.world.hidFlags = flag::shift;
    EXPECT_TRUE(desk.eventPoster.postKeys(EventSourceState::hidSystem, keys));
    EXPECT_THAT(effects(),
                ElementsAre(posted("keyDown", 9, 0x100000), posted("keyUp", 9, 0x20000)));
}

TEST_F(MemoryEventTapTest, MediaKeysShowTheirData) {
    const PostedMediaKey keys[] = {{.flags = 0xA00, .data1 = (7 << 16) | 0xA00}};
    EXPECT_TRUE(desk.eventPoster.postMediaKeys(keys));
    EXPECT_THAT(effects(), ElementsAre(effectLine(
                               "post", R"({"type":"systemDefined","subtype":8,"data1":461312,)"
                                       R"("data2":-1,"flags":2560,"userData":42,"tap":"hid"})")));
}

}  // namespace
}  // namespace orvel::memory
