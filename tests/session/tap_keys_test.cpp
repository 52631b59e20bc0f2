#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/modifiers.hpp"

#include <algorithm>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::KeyStroke;
using rig::PhysicalKey;
using rig::ProbeEvent;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = ProbeEvent::Kind;

class TapKeysTest : public TapSessionTest {};

TEST_F(TapKeysTest, TypedTextPassesThroughUnchanged) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    const std::string text = "Hello, World! [42] {a_b} ~/x?";
    keyboard().type(text);
    EXPECT_TRUE(eventually([&] { return probe.text(); }, text));
    EXPECT_EQ(probe.keys().front().source, desktop().x().deviceId("Virtual core XTEST keyboard"));
}

TEST_F(TapKeysTest, TenThousandKeysArriveInOrderNoneLostNoneDoubled) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    std::vector<KeyStroke> strokes;
    std::vector<std::pair<Kind, int>> typed;
    for (int count = 0; count < 10'000; ++count) {
        const PhysicalKey key(PhysicalKey("a").code + count % 9);
        strokes.push_back({key, true});
        strokes.push_back({key, false});
        typed.emplace_back(Kind::keyPress, key.code);
        typed.emplace_back(Kind::keyRelease, key.code);
    }
    keyboard().play(strokes);
    std::vector<std::pair<Kind, int>> received;
    for (const ProbeEvent& event : probe.waitForKeys(20'000)) {
        if (!event.repeat && event.keysym != "") received.emplace_back(event.kind, event.detail);
    }
    std::erase_if(received, [](const auto& one) {
        return one.first != Kind::keyPress && one.first != Kind::keyRelease;
    });
    EXPECT_EQ(received, typed);
}

TEST_F(TapKeysTest, ARewrittenKeyArrivesRewrittenWithItsRelease) {
    KeyProbe probe = startProbe();
    // A becomes Command+C.
    TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
    keyboard().tap("a");
    const KeyProbe::Events events = probe.waitForKeys(4);
    EXPECT_THAT(spelled(events), ElementsAre("+Control_L", "+c", "-c", "-Control_L"));
}

TEST_F(TapKeysTest, ASwallowedKeyNeverArrives) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"swallow", "3"});
    keyboard().type("af");
    keyboard().type("b");
    EXPECT_THAT(spelled(probe.waitForKeys(4)), ElementsAre("+a", "-a", "+b", "-b"));
}

TEST_F(TapKeysTest, APostedEventIsNotProcessedAgain) {
    KeyProbe probe = startProbe();
    // A posts A: seen twice it would post for ever.
    TapHost tap = startTap({"post", "0", "0", "0"});
    keyboard().tap("a");
    EXPECT_THAT(spelled(probe.waitForKeys(2)), ElementsAre("+a", "-a"));
    tap.tell("post 0 0");
    EXPECT_THAT(spelled(probe.waitForKeys(4)), ElementsAre("+a", "-a", "+a", "-a"));
    EXPECT_THAT(tap.events(), SizeIs(2));
}

TEST_F(TapKeysTest, APostedKeystrokeHidesTheHeldModifierAndGivesItBack) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"post", "9", "8", std::to_string(0x100000)});
    keyboard().chord({"Super_L", "v"});
    keyboard().tap("b");
    EXPECT_THAT(
        spelled(probe.waitForKeys(14)),
        ElementsAre("+Super_L", "+neutral", "-neutral", "-Super_L", "+Control_L", "+c", "-c",
                    "-Control_L", "+Super_L", "+neutral", "-neutral", "-Super_L", "+b", "-b"));
}

TEST_F(TapKeysTest, TwoKeyboardsShareTheirModifiers) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    keyboard().press("Shift_L");
    secondKeyboard().tap("a");
    keyboard().release("Shift_L");
    secondKeyboard().tap("b");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("Ab")));
}

TEST_F(TapKeysTest, AHeldKeyIsRepeatedByTheServer) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"rewrite", "0", "1", "0"});
    keyboard().press("a");
    const auto repeats = [](const KeyProbe::Events& seen) {
        return std::count_if(seen.begin(), seen.end(),
                             [](const ProbeEvent& event) { return event.repeat; });
    };
    const auto events =
        probe.waitFor([&](const KeyProbe::Events& seen) { return repeats(seen) >= 3; });
    keyboard().release("a");
    EXPECT_GE(repeats(events), 3);
    for (const ProbeEvent& event : events) EXPECT_NE(event.keysym, "a");
}

TEST_F(TapKeysTest, ASwallowedKeyDoesNotRepeat) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"swallow", "0"});
    keyboard().press("a");
    EXPECT_TRUE(eventually([&] { return tap.events(); }, SizeIs(testing::Ge(3U))));
    keyboard().release("a");
    EXPECT_TRUE(eventually([&] { return tap.events().back().find("event 11"); }, 0U));
    EXPECT_THAT(probe.keys(), IsEmpty());
}

TEST_F(TapKeysTest, AKeyThatStartedTheTapComesUp) {
    KeyProbe probe = startProbe();
    keyboard().press("Return");
    TapHost tap = startTap();
    keyboard().release("Return");
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
}

TEST_F(TapKeysTest, AModifierHeldBeforeTheStartStillCounts) {
    KeyProbe probe = startProbe();
    keyboard().press("Shift_L");
    TapHost tap = startTap();
    keyboard().tap("a");
    keyboard().release("Shift_L");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("A")));
}

TEST_F(TapKeysTest, EndingInGoodOrderReleasesEverything) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
    keyboard().press("a");
    probe.waitForKeys(2);
    tap.quit();
    EXPECT_THAT(state().syntheticKeysDown(), IsEmpty());
    keyboard().release("a");
    probe.clear();
    keyboard().tap("b");
    EXPECT_EQ(probe.text(), "b");
}

TEST_F(TapKeysTest, ASecondTapIsRefused) {
    TapHost tap = startTap();
    EXPECT_THROW(startTap(), std::exception);
    KeyProbe probe = startProbe();
    keyboard().tap("a");
    EXPECT_THAT(spelled(probe.waitForKeys(2)), ElementsAre("+a", "-a"));
}

TEST_F(TapKeysTest, AKeyboardPulledOutWithKeysDownReleasesThemAndWorksAgain) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
    secondKeyboard().press("Shift_L");
    secondKeyboard().press("a");
    probe.waitForKeys(3);
    secondKeyboard().unplug();
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    secondKeyboard().plug();
    const std::size_t seen = tap.events().size();
    const auto tapped = [&] {
        secondKeyboard().tap("b");
        return tap.events();
    };
    EXPECT_TRUE(eventually(tapped, SizeIs(testing::Gt(seen))));
    probe.clear();
    secondKeyboard().tap("a");
    EXPECT_TRUE(eventually(
        [&] {
            auto keys = spelled(probe.keys());
            std::erase_if(keys, [](const auto& key) { return key == "+b" || key == "-b"; });
            return keys;
        },
        ElementsAre("+Control_L", "+c", "-c", "-Control_L")));
}

TEST_F(TapKeysTest, CapsLockLocksAndItsLightsFollow) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    keyboard().tap("Caps_Lock");
    keyboard().type("a");
    keyboard().tap("Caps_Lock");
    keyboard().type("b");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("Ab")));
    EXPECT_FALSE(state().capsLock());
}

TEST_F(TapKeysTest, CapsLockSetFromInsideHoldsAndIsTakenBack) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    tap.tell("caps on");
    EXPECT_TRUE(eventually([] { return state().capsLock(); }, true));
    keyboard().type("a");
    tap.tell("caps off");
    keyboard().type("b");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("Ab")));
}

TEST_F(TapKeysTest, CapsLockSetDuringItsOwnPressHoldsAndStaysSoAfterTheEnd) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    tap.tell("keepcaps");
    for (const bool on : {true, false, true, false}) {
        SCOPED_TRACE(on);
        probe.clear();
        keyboard().press("Caps_Lock");
        // What the server tells of the press is handled before these keys are.
        keyboard().type("a");
        probe.waitForKeys(3);
        keyboard().release("Caps_Lock");
        EXPECT_EQ(spelled(probe.waitForKeys(4)).back(), "-Caps_Lock");
        keyboard().type("b");
        EXPECT_TRUE(
            eventually([&] { return probe.text().substr(1); }, std::string(on ? "B" : "b")));
        EXPECT_EQ(state().capsLock(), on);
    }
    tap.quit();
    keyboard().type("b");
    EXPECT_FALSE(state().capsLock());
}

TEST_F(TapKeysTest, CapsLockSetDuringItsOwnPressHoldsWhenTheTapEndsBeforeItsRelease) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    tap.tell("keepcaps");
    keyboard().press("Caps_Lock");
    probe.waitForKeys(1);
    tap.quit();
    EXPECT_TRUE(eventually([] { return hasTap(desktop().x()); }, false));
    EXPECT_TRUE(state().capsLock());
    keyboard().release("Caps_Lock");
    keyboard().type("a");
    EXPECT_TRUE(state().capsLock());
    keyboard().tap("Caps_Lock");
    EXPECT_TRUE(eventually([] { return state().capsLock(); }, false));
}

TEST_F(TapKeysTest, TheLayoutInForceDecidesWhatIsTyped) {
    KeyProbe probe = startProbe();
    desktop().server().setLayout("us,de");
    TapHost tap = startTap();
    keyboard().type("z");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("z")));
    state().lockLayoutGroup(1);
    probe.clear();
    keyboard().type("z");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("y")));
    state().lockLayoutGroup(0);
    desktop().server().setLayout("us");
}

TEST_F(TapKeysTest, ANewLayoutIsFollowedWhileTheTapRuns) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
    keyboard().type("z");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("z")));
    desktop().server().setLayout("de");
    probe.clear();
    keyboard().type("z");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("y")));
    probe.clear();
    keyboard().tap("a");
    EXPECT_THAT(spelled(probe.waitForKeys(4)), ElementsAre("+Control_L", "+c", "-c", "-Control_L"));
    desktop().server().setLayout("us");
}

TEST_F(TapKeysTest, ThePanicChordGivesTheKeyboardBackUntilItIsStruckAgain) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"swallow", "3"});
    keyboard().chord({"BackSpace", "Escape", "Return"});
    ASSERT_TRUE(tap.process().out().waitForText("given back"));
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    probe.clear();
    keyboard().type("f");
    EXPECT_THAT(spelled(probe.waitForKeys(2)), ElementsAre("+f", "-f"));
    EXPECT_EQ(probe.keys().front().source, keyboard().id());
    keyboard().chord({"BackSpace", "Escape", "Return"});
    ASSERT_TRUE(tap.process().out().waitForText("taken again")) << tap.process().err().text();
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    probe.clear();
    keyboard().type("fa");
    EXPECT_THAT(spelled(probe.waitForKeys(2)), ElementsAre("+a", "-a"));
}

}  // namespace
}  // namespace orvel::test
