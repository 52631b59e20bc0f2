#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/screen_locker.hpp"
#include "tools/rig/text_field_app.hpp"
#include "tools/rig/windows.hpp"
#include "tools/rig/x_connection.hpp"
#include "tools/rig/xterm_app.hpp"

#include <csignal>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::KeyStroke;
using rig::PhysicalKey;
using rig::ProbeEvent;
using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using Kind = ProbeEvent::Kind;

constexpr const char* kPassword = "Tr0ub4dor & 3 \"horses\"";

/// The tap among other programs that have their own ideas about the keyboard.
class TapSurroundingsTest : public TapSessionTest {
protected:
    static bool isOpen(KeyProbe& probe) { return rig::isVisible(desktop().x(), probe.window()); }
};

TEST_F(TapSurroundingsTest, TheWindowManagersShortcutsWork) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    keyboard().chord({"Alt_L", "F4"});
    EXPECT_TRUE(eventually([&] { return isOpen(probe); }, false));
}

TEST_F(TapSurroundingsTest, ARewrittenKeyMayBeAShortcutThatTheWindowManagerGrabbed) {
    KeyProbe probe = startProbe();
    // A becomes Option+F4.
    TapHost tap = startTap({"rewrite", "0", "118", std::to_string(0x80000)});
    keyboard().tap("a");
    EXPECT_TRUE(eventually([&] { return isOpen(probe); }, false));
}

TEST_F(TapSurroundingsTest, AKeyThatTheWindowManagerGrabbedCanBeSwallowed) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"swallow", "118"});
    keyboard().chord({"Alt_L", "F4"});
    keyboard().tap("b");
    probe.waitFor([](const KeyProbe::Events& seen) {
        return !seen.empty() && seen.back().keysym == "b" && seen.back().kind == Kind::keyRelease;
    });
    EXPECT_TRUE(isOpen(probe));
}

TEST_F(TapSurroundingsTest, APasswordTypedIntoALockerIsThePasswordReceived) {
    TapHost tap = startTap();
    rig::ScreenLocker locker(desktop().environment());
    keyboard().type(std::string(kPassword) + '\n');
    EXPECT_EQ(locker.nextPassword(), kPassword);
    keyboard().tap("Caps_Lock");
    keyboard().type("shout\n");
    keyboard().tap("Caps_Lock");
    EXPECT_EQ(locker.nextPassword(), "SHOUT");
    EXPECT_TRUE(eventually([] { return state().capsLock(); }, false));
    locker.unlock();
}

TEST_F(TapSurroundingsTest, ALockerThatWasThereFirstReceivesItsPasswordToo) {
    rig::ScreenLocker locker(desktop().environment());
    TapHost tap = startTap();
    keyboard().type(std::string(kPassword) + '\n');
    EXPECT_EQ(locker.nextPassword(), kPassword);
    locker.unlock();
}

TEST_F(TapSurroundingsTest, AKilledTapDoesNotCostTheRestOfThePassword) {
    rig::ScreenLocker locker(desktop().environment());
    TapHost tap = startTap();
    keyboard().type("first ");
    ASSERT_TRUE(eventually([&] { return tap.events().size(); }, testing::Ge(12U)));
    ASSERT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    tap.process().signal(SIGKILL);
    ASSERT_TRUE(eventually([] { return hasTap(desktop().x()); }, false));
    keyboard().type("second\n");
    EXPECT_EQ(locker.nextPassword(), "first second");
    locker.unlock();
}

TEST_F(TapSurroundingsTest, KeysHeldWhenTheScreenLocksAndUnlocksDoNotStick) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
    keyboard().press("Super_L");
    keyboard().press("a");
    probe.waitForKeys(2);
    rig::ScreenLocker locker(desktop().environment());
    keyboard().release("a");
    keyboard().release("Super_L");
    keyboard().press("Shift_L");
    locker.unlock();
    keyboard().release("Shift_L");
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    EXPECT_EQ(state().modifiers(), 0U);
    probe.clear();
    keyboard().type("ok");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("ok")));
}

TEST_F(TapSurroundingsTest, AToolkitsPasswordFieldReceivesThePassword) {
    TapHost tap = startTap();
    rig::TextFieldApp field(rig::TextFieldApp::Kind::password, desktop().environment(),
                            desktop().x());
    keyboard().type(std::string(kPassword) + '\n');
    EXPECT_EQ(field.nextText(), kPassword);
}

TEST_F(TapSurroundingsTest, ATerminalReceivesControlCharacters) {
    TapHost tap = startTap();
    rig::XtermApp terminal(desktop().home(), desktop().environment(), desktop().x());
    keyboard().type("ls");
    keyboard().chord({"Control_L", "c"});
    keyboard().tap("Up");
    EXPECT_TRUE(eventually([&] { return terminal.received(); }, Eq("ls\x03\x1b[A")));
}

TEST_F(TapSurroundingsTest, KeysTypedWhileAnotherProgramHoldsTheServerAreOnlyLate) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    {
        const rig::ServerGrab grab(desktop().x());
        keyboard().type("patience");
    }
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("patience")));
}

TEST_F(TapSurroundingsTest, TwoKeyboardsTypingAtOnceEachKeepTheirOrder) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    const std::string left = "asdfqwer";
    const std::string right = "jkluiopm";
    const auto play = [](rig::Keyboard& on, const std::string& letters) {
        for (int round = 0; round < 250; ++round) {
            on.type(letters);
        }
    };
    std::thread other([&] { play(secondKeyboard(), right); });
    play(keyboard(), left);
    other.join();
    const KeyProbe::Events events = probe.waitForKeys(2UL * 2 * 250 * left.size());
    std::string fromLeft;
    std::string fromRight;
    for (const ProbeEvent& event : events) {
        if (event.kind != Kind::keyPress) continue;
        (left.find(event.text) != std::string::npos ? fromLeft : fromRight) += event.text;
    }
    std::string wantedLeft;
    std::string wantedRight;
    for (int round = 0; round < 250; ++round) {
        wantedLeft += left;
        wantedRight += right;
    }
    EXPECT_EQ(fromLeft, wantedLeft);
    EXPECT_EQ(fromRight, wantedRight);
}

TEST_F(TapSurroundingsTest, TheSameModifierOnTwoKeyboardsHoldsUntilBothAreUp) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    keyboard().press("Shift_L");
    secondKeyboard().press("Shift_L");
    keyboard().release("Shift_L");
    keyboard().tap("a");
    secondKeyboard().release("Shift_L");
    keyboard().tap("b");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("Ab")));
}

TEST_F(TapSurroundingsTest, BothSidesOfOneModifierHoldUntilBothAreUp) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    keyboard().press("Shift_L");
    keyboard().press("Shift_R");
    keyboard().release("Shift_L");
    keyboard().tap("a");
    keyboard().release("Shift_R");
    keyboard().tap("b");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("Ab")));
}

TEST_F(TapSurroundingsTest, AModifierPressedUnderARewrittenKeyCountsAfterIt) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
    keyboard().press("a");
    keyboard().press("Shift_L");
    keyboard().release("a");
    keyboard().tap("b");
    keyboard().release("Shift_L");
    keyboard().tap("d");
    // The first is what Control+C types.
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("\x03"
                                                                     "Bd")));
}

TEST_F(TapSurroundingsTest, StartedAndEndedOverAndOverUnderHeldKeysItLeavesNothingDown) {
    KeyProbe probe = startProbe();
    std::mt19937 random(7);
    const std::vector<PhysicalKey> keys{"a", "Shift_L", "Super_L", "f", "Control_R"};
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        const PhysicalKey before = keys[random() % keys.size()];
        const PhysicalKey during = keys[random() % keys.size()];
        keyboard().press(before);
        TapHost tap = startTap({"rewrite", "0", "8", std::to_string(0x100000)});
        secondKeyboard().press(during);
        if (random() % 2 == 0) keyboard().release(before);
        tap.quit();
        keyboard().release(before);
        secondKeyboard().release(during);
        EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
        EXPECT_THAT(state().syntheticKeysDown(), IsEmpty());
    }
    probe.clear();
    keyboard().type("ok");
    EXPECT_TRUE(eventually([&] { return probe.text(); }, std::string("ok")));
}

}  // namespace
}  // namespace orvel::test
