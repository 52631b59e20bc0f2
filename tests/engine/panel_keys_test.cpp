#include "tests/engine/engine_fixture.hpp"

namespace orvel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PanelKeys : public EngineFixture {
protected:
    void SetUp() override {
        EngineFixture::SetUp();
        overlay.clipboardShows = true;
    }
};

TEST_F(PanelKeys, SteerThePanelAndReachNobody) {
    for (const KeyCode code : {key::upArrow, key::downArrow, key::returnKey, key::keypadEnter}) {
        type(code);
        EXPECT_THAT(effects(), ElementsAre(swallowed(), swallowed()));
    }
    EXPECT_THAT(takeCommands(), ElementsAre("selection up", "selection down", "paste", "paste"));
}

TEST_F(PanelKeys, EscapeClosesThePanel) {
    type(key::escape);
    EXPECT_THAT(takeCommands(), ElementsAre("toggle clipboard"));
    EXPECT_THAT(effects(), ElementsAre(swallowed(), swallowed()));
}

TEST_F(PanelKeys, WorkWithTheMasterSwitchOffAndWhilePaused) {
    engine.setWindowsModeEnabled(false);
    engine.setPaused(true);
    lookAway();
    type(key::downArrow);
    EXPECT_THAT(takeCommands(), ElementsAre("selection down"));
    EXPECT_THAT(effects(), ElementsAre(swallowed(), swallowed()));
}

TEST_F(PanelKeys, AreNotOtherKeysForLoneModifiers) {
    press(key::upArrow);
    EXPECT_FALSE(state().hasPressedOtherKeySinceOption);
}

TEST_F(PanelKeys, ActAfterTheCallbackReturned) {
    desk.eventTap.deliver(keyDown(key::returnKey));
    EXPECT_THAT(commands, IsEmpty());
    drain();
    EXPECT_THAT(commands, ElementsAre("paste"));
}

TEST_F(PanelKeys, OnlyTheArrowsActOnRepeats) {
    for (const KeyCode code : {key::upArrow, key::returnKey, key::escape}) {
        overlay.clipboardShows = true;
        press(code);
        send(keyRepeat(code));
        overlay.clipboardShows = true;
        send(keyRepeat(code));
        release(code);
    }
    EXPECT_THAT(takeCommands(), ElementsAre("selection up", "selection up", "selection up", "paste",
                                            "toggle clipboard"));
}

TEST_F(PanelKeys, ARepeatWhosePressCameBeforeThePanelMovesTheSelectionAndPastesNothing) {
    overlay.clipboardShows = false;
    press(key::downArrow);
    press(key::returnKey);
    overlay.clipboardShows = true;
    lookAway();
    send(keyRepeat(key::downArrow));
    send(keyRepeat(key::returnKey));
    EXPECT_THAT(effects(), ElementsAre(swallowed(), swallowed()));
    EXPECT_THAT(takeCommands(), ElementsAre("selection down"));
    release(key::downArrow);
    release(key::returnKey);
    EXPECT_THAT(effects(), ElementsAre(swallowed(), swallowed()));
    EXPECT_THAT(state().swallowedKeys, IsEmpty());
}

TEST_F(PanelKeys, ThePanelClosedInBetweenStillSwallowsRepeatAndRelease) {
    press(key::returnKey);
    overlay.clipboardShows = false;
    lookAway();
    send(keyRepeat(key::returnKey));
    release(key::returnKey);
    EXPECT_THAT(effects(), ElementsAre(swallowed(), swallowed()));
    EXPECT_THAT(takeCommands(), ElementsAre("paste"));
    EXPECT_THAT(state().swallowedKeys, IsEmpty());
}

TEST_F(PanelKeys, ThePanelClosedInBetweenSwallowsTheReleaseWithTheMasterSwitchOff) {
    press(key::escape);
    engine.setWindowsModeEnabled(false);
    lookAway();
    release(key::escape);
    EXPECT_THAT(effects(), ElementsAre(swallowed()));
    EXPECT_THAT(state().swallowedKeys, IsEmpty());
}

TEST_F(PanelKeys, TakingOverARewrittenKeyLeavesNoEntryBehind) {
    overlay.clipboardShows = false;
    prefer("card_finder", true);
    desk.world.frontmost = "com.apple.finder";
    press(key::returnKey);
    overlay.clipboardShows = true;
    send(keyRepeat(key::returnKey));
    release(key::returnKey);
    EXPECT_THAT(state().activeRemaps, IsEmpty());
    EXPECT_THAT(state().swallowedKeys, IsEmpty());
}

TEST_F(PanelKeys, OtherKeysGoOn) {
    type(key::a);
    EXPECT_THAT(effects(), ElementsAre(passed(), passed()));
    EXPECT_THAT(takeCommands(), IsEmpty());
}

TEST_F(PanelKeys, OurOwnEventsPass) {
    send(marked(keyDown(key::returnKey)));
    EXPECT_THAT(effects(), ElementsAre(passed()));
    EXPECT_THAT(takeCommands(), IsEmpty());
}

}  // namespace
}  // namespace orvel::test
