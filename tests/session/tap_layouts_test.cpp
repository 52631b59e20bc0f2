#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/modifiers.hpp"

#include <string>
#include <vector>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::PhysicalKey;
using rig::ProbeEvent;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = ProbeEvent::Kind;

/// A becomes Command+C.
const std::vector<std::string> kCopyOnA{"rewrite", "0", "8", std::to_string(0x100000)};

/// Layouts, locks and groups, which turn the same key into another letter.
class TapLayoutsTest : public TapSessionTest {
protected:
    void TearDown() override {
        state().lockLayoutGroup(0);
        desktop().server().setLayout("us");
        TapSessionTest::TearDown();
    }

    /// The copy shortcut as an application gets it, by places and not by letters.
    static void expectCopy(KeyProbe& probe, unsigned locks) {
        const auto isKey = [](Kind kind, const char* key) {
            return testing::AllOf(testing::Field(&ProbeEvent::kind, kind),
                                  testing::Property(&ProbeEvent::key, PhysicalKey(key)));
        };
        const KeyProbe::Events events = probe.waitForKeys(4);
        ASSERT_THAT(events, ElementsAre(isKey(Kind::keyPress, "Control_L"),
                                        isKey(Kind::keyPress, "c"), isKey(Kind::keyRelease, "c"),
                                        isKey(Kind::keyRelease, "Control_L")));
        EXPECT_EQ(events[1].modifiers, rig::kControl | locks);
    }
};

TEST_F(TapLayoutsTest, AShortcutArrivesUnderEveryLockAndLeavesTheLocksAlone) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap(kCopyOnA);
    for (const bool caps : {false, true}) {
        for (const bool num : {false, true}) {
            SCOPED_TRACE(testing::Message() << "Caps Lock " << caps << ", Num Lock " << num);
            for (const auto& [key, on] : {std::pair{"Caps_Lock", caps}, {"Num_Lock", num}}) {
                if (on) keyboard().tap(key);
            }
            EXPECT_TRUE(eventually([] { return state().capsLock(); }, caps));
            EXPECT_TRUE(eventually([] { return state().numLock(); }, num));
            EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
            probe.clear();
            keyboard().tap("a");
            expectCopy(probe, (caps ? rig::kCapsLock : 0) | (num ? rig::kNumLock : 0));
            EXPECT_EQ(state().capsLock(), caps);
            EXPECT_EQ(state().numLock(), num);
            for (const auto& [key, on] : {std::pair{"Caps_Lock", caps}, {"Num_Lock", num}}) {
                if (on) keyboard().tap(key);
            }
            EXPECT_TRUE(eventually([] { return state().capsLock(); }, false));
            EXPECT_TRUE(eventually([] { return state().numLock(); }, false));
        }
    }
}

TEST_F(TapLayoutsTest, TheKeypadTypesDigitsOnlyUnderNumLock) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    keyboard().tap("KP_1");
    keyboard().tap("Num_Lock");
    keyboard().tap("KP_1");
    keyboard().tap("Num_Lock");
    const KeyProbe::Events events = probe.waitForKeys(8);
    ASSERT_EQ(events.size(), 8U);
    EXPECT_EQ(events[0].keysym, "KP_End");
    EXPECT_EQ(events[4].keysym, "KP_1");
}

TEST_F(TapLayoutsTest, InALayoutThatIsNotLatinAShortcutIsStillTheKeysPlace) {
    KeyProbe probe = startProbe();
    desktop().server().setLayout("us,ru");
    TapHost tap = startTap(kCopyOnA);
    state().lockLayoutGroup(1);
    probe.clear();
    keyboard().tap("s");
    EXPECT_THAT(spelled(probe.waitForKeys(2)), ElementsAre("+Cyrillic_yeru", "-Cyrillic_yeru"));
    probe.clear();
    keyboard().tap("a");
    expectCopy(probe, 0);
    EXPECT_EQ(state().layoutGroup(), 1);
}

TEST_F(TapLayoutsTest, PlainShortcutsOfALayoutThatIsNotLatinPassAsTyped) {
    KeyProbe probe = startProbe();
    desktop().server().setLayout("us,ru");
    TapHost tap = startTap();
    state().lockLayoutGroup(1);
    probe.clear();
    keyboard().chord({"Control_L", "c"});
    expectCopy(probe, 0);
}

TEST_F(TapLayoutsTest, ALayoutChangedUnderAHeldKeyLeavesNothingDown) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap(kCopyOnA);
    keyboard().press("a");
    keyboard().press("Shift_L");
    EXPECT_THAT(spelled(probe.waitForKeys(2)), ElementsAre("+Control_L", "+c"));
    desktop().server().setLayout("de");
    keyboard().release("a");
    keyboard().release("Shift_L");
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    EXPECT_THAT(state().syntheticKeysDown(), IsEmpty());
    probe.clear();
    keyboard().tap("z");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("y")));
}

TEST_F(TapLayoutsTest, AKeymapResetByPluggingInIsFollowed) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap(kCopyOnA);
    desktop().server().setLayout("de");
    secondKeyboard().unplug();
    secondKeyboard().plug();
    // What desktops do when a keyboard comes.
    desktop().server().setLayout("us");
    const auto typed = [&] {
        probe.clear();
        secondKeyboard().tap("z");
        probe.waitForKeys(2);
        return probe.text();
    };
    EXPECT_TRUE(eventually(typed, std::string("z")));
    probe.clear();
    secondKeyboard().tap("a");
    expectCopy(probe, 0);
}

/// What the server does when its console is switched away and back: every device goes and comes.
TEST_F(TapLayoutsTest, AConsoleSwitchedAwayAndBackUnderHeldKeysLeavesNothingDown) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap(kCopyOnA);
    keyboard().press("Control_L");
    secondKeyboard().press("Alt_L");
    keyboard().press("a");
    EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); }, testing::Not(IsEmpty())));
    std::vector<rig::InputDevice*> devices{&keyboard(), &secondKeyboard(), &mouse()};
    for (rig::InputDevice* device : devices) device->unplug();
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    EXPECT_EQ(state().modifiers(), 0U);
    for (rig::InputDevice* device : devices) device->plug();
    const auto copied = [&] {
        probe.clear();
        keyboard().tap("a");
        return spelled(probe.waitForKeys(4));
    };
    EXPECT_TRUE(eventually(copied, ElementsAre("+Control_L", "+c", "-c", "-Control_L")));
    probe.clear();
    secondKeyboard().type("ok");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("ok")));
}

}  // namespace
}  // namespace orvel::test
