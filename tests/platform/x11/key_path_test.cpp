#include "platform/x11/key_path.hpp"

#include "tests/platform/x11/key_path_fixture.hpp"

namespace orvel::x11::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(KeyPathTest, AKeyThatPassesLeavesAsItCame) {
    press(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::a), up(pc::a)));
}

TEST_F(KeyPathTest, EventsCarryTheFlagsOfAllKeyboards) {
    std::vector<Event> events;
    path.setHandler([&](Event& event) {
        events.push_back(event);
        return EventVerdict::pass;
    });
    press(pc::leftShift, kSecondKeyboard);
    press(pc::a);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].type, EventType::flagsChanged);
    EXPECT_EQ(events[0].keyCode, key::leftShift);
    EXPECT_EQ(events[1].type, EventType::keyDown);
    EXPECT_EQ(events[1].flags, flag::shift);
}

TEST_F(KeyPathTest, TheReleaseOfOneOfTwoEqualModifiersKeepsItsFlag) {
    EventFlags last = 0;
    path.setHandler([&](Event& event) {
        last = event.flags;
        return EventVerdict::pass;
    });
    press(pc::leftShift);
    press(pc::rightShift);
    release(pc::leftShift);
    EXPECT_EQ(last, flag::shift);
    release(pc::rightShift);
    EXPECT_EQ(last, flag::none);
}

TEST_F(KeyPathTest, ARewrittenKeyLeavesRewrittenWithItsRelease) {
    rewrite(key::a, key::s, 0);
    press(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::s), up(pc::s)));
}

TEST_F(KeyPathTest, TheReleaseFollowsThePressWhateverIsDecidedMeanwhile) {
    rewrite(key::a, key::s, 0);
    press(pc::a);
    path.setHandler({});
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::s), up(pc::s)));
}

TEST_F(KeyPathTest, ASwallowedKeyLeavesNothingAlsoWhenItsReleasePasses) {
    swallow(key::a);
    press(pc::a);
    path.setHandler({});
    release(pc::a);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(KeyPathTest, ASwallowedReleaseStillReleasesWhatWasPutOut) {
    press(pc::a);
    swallow(key::a);
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::a), up(pc::a)));
}

TEST_F(KeyPathTest, RewrittenFlagsArePressedAroundTheKey) {
    rewrite(key::a, key::c, flag::command);
    press(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(),
                ElementsAre(down(pc::leftControl), down(pc::c), up(pc::c), up(pc::leftControl)));
}

TEST_F(KeyPathTest, ARewrittenShortcutLeavesByTheNameThatTheApplicationHasForIt) {
    rewrite(key::a, key::c, flag::command);
    path.setTranslator([](const MacShortcut& shortcut) -> std::optional<XShortcut> {
        EXPECT_EQ(shortcut.source, key::a);
        if (shortcut.key != key::c) return std::nullopt;
        return XShortcut{key::s, {}};
    });
    press(pc::a);
    path.setTranslator({});
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::s), up(pc::s)));
}

TEST_F(KeyPathTest, AKeyThatPassesIsNeverTranslated) {
    path.setTranslator([](const MacShortcut&) { return XShortcut{key::s, {}}; });
    press(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::a), up(pc::a)));
}

TEST_F(KeyPathTest, HeldModifiersThatTheFlagsLackAreLiftedWhileTheKeyIsDown) {
    press(pc::leftShift);
    rewrite(key::backspace, key::forwardDelete, 0);
    press(pc::backspace);
    release(pc::backspace);
    release(pc::leftShift);
    EXPECT_THAT(taken(),
                ElementsAre(down(pc::leftShift),                         //
                            down(pc::blank), up(pc::blank),              // no Shift tap
                            up(pc::leftShift), down(pc::forwardDelete),  //
                            up(pc::forwardDelete), down(pc::leftShift),  // held again
                            down(pc::blank), up(pc::blank), up(pc::leftShift)));
}

TEST_F(KeyPathTest, AClaimedTapIsMaskedAndTheNextOneIsNot) {
    press(pc::leftShift);
    path.setHandler([this](Event&) {
        path.claimTap();
        return EventVerdict::pass;
    });
    release(pc::leftShift);
    path.setHandler({});
    press(pc::leftShift);
    release(pc::leftShift);
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftShift), down(pc::blank), up(pc::blank),
                                     up(pc::leftShift), down(pc::leftShift), up(pc::leftShift)));
}

TEST_F(KeyPathTest, AClaimedCapsLockIsNotSeen) {
    path.setHandler([this](Event&) {
        path.claimTap();
        return EventVerdict::pass;
    });
    press(pc::capsLock);
    release(pc::capsLock);
    path.setHandler({});
    EXPECT_THAT(taken(), IsEmpty());
    press(pc::capsLock);
    release(pc::capsLock);
    EXPECT_THAT(taken(), ElementsAre(down(pc::capsLock), up(pc::capsLock)));
}

TEST_F(KeyPathTest, ATypedCharacterBetweenMakesTheMaskNeedless) {
    press(pc::leftShift);
    press(pc::a);
    release(pc::a);
    taken();
    release(pc::leftShift);
    EXPECT_THAT(taken(), ElementsAre(up(pc::leftShift)));
}

TEST_F(KeyPathTest, ALoneAltTapOfTheUserStaysOne) {
    press(pc::leftAlt);
    release(pc::leftAlt);
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftAlt), up(pc::leftAlt)));
}

TEST_F(KeyPathTest, AltWithASwallowedKeyOpensNoMenu) {
    press(pc::leftAlt);
    swallow(key::tab);
    press(pc::tab);
    release(pc::tab);
    release(pc::leftAlt);
    EXPECT_THAT(taken(),
                ElementsAre(down(pc::leftAlt), down(pc::blank), up(pc::blank), up(pc::leftAlt)));
}

TEST_F(KeyPathTest, ARewrittenModifierLeavesInTheLanguageOfApplications) {
    rewrite(key::leftControl, key::leftCommand, flag::command);
    press(pc::leftControl);
    release(pc::leftControl);
    rewrite(key::leftCommand, key::leftControl, flag::control);
    press(pc::leftSuper);
    release(pc::leftSuper);
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftControl), up(pc::leftControl),
                                     down(pc::leftSuper), up(pc::leftSuper)));
}

TEST_F(KeyPathTest, APassedKeyIsSeenWithTheModifiersThatAreHeldNotWithWhatTheyBecame) {
    rewrite(key::leftOption, key::leftControl, flag::control);
    press(pc::leftAlt);
    path.setHandler({});
    press(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftSuper), down(pc::blank), up(pc::blank),
                                     up(pc::leftSuper), down(pc::leftAlt), down(pc::a)));
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(up(pc::a), up(pc::leftAlt), down(pc::leftSuper)));
}

TEST_F(KeyPathTest, ARepeatThatLeavesAsTheKeyAlreadyDownPostsNothing) {
    press(pc::a);
    taken();
    repeat(pc::a);
    repeat(pc::a);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(KeyPathTest, ASwallowedRepeatReleasesTheKeyThatIsOut) {
    press(pc::a);
    taken();
    swallow(key::a);
    repeat(pc::a);
    EXPECT_THAT(taken(), ElementsAre(up(pc::a)));
    repeat(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(KeyPathTest, ARepeatThatLeavesAsAnotherKeyReleasesTheFirst) {
    press(pc::a);
    taken();
    rewrite(key::a, key::s, 0);
    repeat(pc::a);
    EXPECT_THAT(taken(), ElementsAre(up(pc::a), down(pc::s)));
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(up(pc::s)));
}

TEST_F(KeyPathTest, TheServerRepeatsARewrittenKeyWithItsOwnFlags) {
    press(pc::leftShift);
    rewrite(key::backspace, key::forwardDelete, 0);
    press(pc::backspace);
    taken();
    repeat(pc::backspace);
    EXPECT_THAT(taken(), IsEmpty());
    EXPECT_FALSE(ledger.down()[pc::leftShift]);
}

TEST_F(KeyPathTest, ModifierPressedWhileARewrittenKeyIsHeldWaitsForItsRelease) {
    rewrite(key::a, key::leftArrow, flag::command);
    press(pc::a);
    taken();
    press(pc::leftShift);
    EXPECT_THAT(taken(), IsEmpty());
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(up(pc::left), up(pc::leftControl), down(pc::leftShift)));
}

TEST_F(KeyPathTest, ModifiersOfAHeldPlainKeyChangeAtOnce) {
    press(pc::a);
    taken();
    press(pc::leftShift);
    release(pc::leftShift);
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftShift), up(pc::leftShift)));
}

TEST_F(KeyPathTest, AReleaseWithoutAPressIsPutOut) {
    release(pc::returnKey);
    EXPECT_THAT(taken(), ElementsAre(up(pc::returnKey)));
}

TEST_F(KeyPathTest, APressWithoutAReleaseInBetweenIsSeenAsAPress) {
    press(pc::a);
    press(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(), ElementsAre(down(pc::a), up(pc::a), down(pc::a), up(pc::a)));
}

TEST_F(KeyPathTest, OneKeyOnTwoKeyboardsIsHeldUntilBothAreReleased) {
    press(pc::leftShift);
    press(pc::leftShift, kSecondKeyboard);
    release(pc::leftShift);
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftShift)));
    release(pc::leftShift, kSecondKeyboard);
    EXPECT_THAT(taken(), ElementsAre(up(pc::leftShift)));
}

TEST_F(KeyPathTest, AnUnpluggedKeyboardReleasesItsKeysAndTellsTheHandler) {
    press(pc::leftShift);
    press(pc::a);
    press(pc::s, kSecondKeyboard);
    taken();
    std::vector<Event> events;
    path.setHandler([&](Event& event) {
        events.push_back(event);
        return EventVerdict::pass;
    });
    path.releaseDevice(kFirstKeyboard);
    EXPECT_THAT(taken(), ElementsAre(up(pc::a), up(pc::leftShift)));
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].type, EventType::keyUp);
    EXPECT_EQ(events[1].type, EventType::flagsChanged);
    EXPECT_EQ(events[1].flags, flag::none);
    EXPECT_TRUE(ledger.down()[pc::s]);
}

TEST_F(KeyPathTest, AKeyHeldBeforeTheStartIsReleasedWithItsKey) {
    path.adopt({kFirstKeyboard, pc::returnKey});
    release(pc::returnKey);
    EXPECT_THAT(taken(), ElementsAre(up(pc::returnKey)));
}

TEST_F(KeyPathTest, AModifierHeldBeforeTheStartCountsForTheNextKey) {
    EventFlags flags = 0;
    path.setHandler([&](Event& event) {
        flags = event.flags;
        return EventVerdict::pass;
    });
    path.adopt({kFirstKeyboard, pc::leftControl});
    press(pc::a);
    EXPECT_EQ(flags, flag::control);
    EXPECT_THAT(taken(), ElementsAre(down(pc::a)));
}

TEST_F(KeyPathTest, CapsLockIsOneEventPerChangeOfTheLock) {
    std::vector<Event> events;
    path.setHandler([&](Event& event) {
        events.push_back(event);
        return EventVerdict::pass;
    });
    press(pc::capsLock);
    release(pc::capsLock);
    press(pc::capsLock);
    release(pc::capsLock);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].flags, flag::capsLock);
    EXPECT_EQ(events[1].flags, flag::none);
    EXPECT_THAT(taken(), ElementsAre(down(pc::capsLock), up(pc::capsLock), down(pc::capsLock),
                                     up(pc::capsLock)));
}

TEST_F(KeyPathTest, TheFnKeyIsSeenInsideAndNeverLeaves) {
    map = KeyMap(pcKeys(), "COMP");
    std::vector<Event> events;
    path.setHandler([&](Event& event) {
        events.push_back(event);
        return EventVerdict::pass;
    });
    press(pc::menu);
    EXPECT_TRUE(state.isDown(key::fn));
    press(pc::a);
    release(pc::a);
    release(pc::menu);
    ASSERT_EQ(events.size(), 4U);
    EXPECT_EQ(events[0].keyCode, key::fn);
    EXPECT_EQ(events[1].flags, flag::secondaryFn);
    EXPECT_THAT(taken(), ElementsAre(down(pc::a), up(pc::a)));
}

TEST_F(KeyPathTest, AKeyWithoutCounterpartPassesAndCanBeSwallowed) {
    press(pc::mute);
    release(pc::mute);
    EXPECT_THAT(taken(), ElementsAre(down(pc::mute), up(pc::mute)));
}

TEST_F(KeyPathTest, AKeyRewrittenToOneThatTheKeyboardLacksLeavesNothing) {
    rewrite(key::a, key::f16, 0);
    press(pc::a);
    release(pc::a);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(KeyPathTest, ReleaseAllGivesEverythingUp) {
    press(pc::leftAlt);
    rewrite(key::a, key::c, flag::command);
    press(pc::a);
    ledger.releaseAll();
    EXPECT_TRUE(ledger.down().none());
    taken();
    release(pc::a);
    release(pc::leftAlt);
    EXPECT_TRUE(ledger.down().none());
}

}  // namespace
}  // namespace orvel::x11::test
