#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"

#include <chrono>
#include <csignal>
#include <random>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::IsEmpty;

/// Rewrites one key, so that what is out is not what is held.
const std::vector<std::string> kRules{"rewrite", "0", "8", std::to_string(0x100000)};

class TapDeathTest : public TapSessionTest {
protected:
    /// Presses a few keys on both keyboards; which ones depends on chance.
    static void pressSome(std::mt19937& random) {
        for (const char* key : {"Shift_L", "a", "s", "Control_L"}) {
            if (random() % 2 == 0) keyboard().press(key);
            if (random() % 4 == 0) secondKeyboard().press(key);
        }
    }
    static void releaseAll() {
        for (const char* key : {"Shift_L", "a", "s", "Control_L"}) {
            keyboard().release(key);
            secondKeyboard().release(key);
        }
    }
    static void expectPlainTyping(KeyProbe& probe) {
        EXPECT_TRUE(eventually([] { return hasTap(desktop().x()); }, false));
        probe.clear();
        keyboard().type("ok");
        EXPECT_EQ(probe.text(), "ok");
    }
};

TEST_F(TapDeathTest, KilledAtAnyPointItLeavesNoKeyStuckAndTheKeyboardWorks) {
    KeyProbe probe = startProbe();
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        TapHost tap = startTap(kRules);
        pressSome(random);
        // Somewhere between the first and the last key of a burst.
        std::vector<rig::KeyStroke> strokes = rig::strokesFor("asdfasdf");
        strokes.erase(strokes.begin() + static_cast<long>(random() % strokes.size()),
                      strokes.end());
        keyboard().play(strokes);
        tap.process().signal(SIGKILL);
        EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); }, IsEmpty()));
        releaseAll();
        keyboard().type("d");
        EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
        expectPlainTyping(probe);
    }
}

TEST_F(TapDeathTest, AKeyHeldSinceBeforeTheStartComesUpWhenItsReleaseDiesWithTheTap) {
    KeyProbe probe = startProbe();
    keyboard().press("Shift_L");
    TapHost tap = startTap();
    tap.process().signal(SIGSTOP);
    keyboard().release("Shift_L");
    tap.process().signal(SIGKILL);
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    expectPlainTyping(probe);
}

TEST_F(TapDeathTest, StoppedItIsEndedAndTheKeyboardIsBackWithinThreeSeconds) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap(kRules);
    keyboard().press("a");
    probe.waitForKeys(2);
    const auto stoppedAt = steady_clock::now();
    tap.process().signal(SIGSTOP);
    keyboard().release("a");
    const auto ended = tap.process().waitForExit(milliseconds(3000));
    ASSERT_TRUE(ended.has_value());
    EXPECT_EQ(ended->signal, SIGKILL);
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty(), milliseconds(3000)));
    expectPlainTyping(probe);
    EXPECT_LT(steady_clock::now() - stoppedAt, milliseconds(3000));
    EXPECT_TRUE(tap.process().err().waitForText("does not answer"));
}

TEST_F(TapDeathTest, WithoutItsGuardItGetsAnotherOne) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap(kRules);
    const auto guards = [&] { return tap.guards(); };
    const std::vector<int> first = guards();
    ASSERT_EQ(first.size(), 1U);
    ::kill(first.front(), SIGKILL);
    EXPECT_TRUE(eventually(guards, testing::AllOf(testing::SizeIs(1), testing::Ne(first))));
    keyboard().press("a");
    probe.waitForKeys(2);
    tap.process().signal(SIGKILL);
    keyboard().release("a");
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    expectPlainTyping(probe);
}

TEST_F(TapDeathTest, ACapsLockThatDiedWithItDoesNotComeBackWithTheNextKey) {
    KeyProbe probe = startProbe();
    TapHost tap = startTap();
    const std::vector<int> guards = tap.guards();
    ASSERT_EQ(guards.size(), 1U);
    tap.process().signal(SIGSTOP);
    keyboard().tap("Caps_Lock");
    tap.process().signal(SIGKILL);
    EXPECT_TRUE(eventually([&] { return isRunning(guards.front()); }, false));
    expectPlainTyping(probe);
    EXPECT_FALSE(state().capsLock());
}

TEST_F(TapDeathTest, TheEndOfTheServerEndsItWithAStatusOfItsOwn) {
    rig::ChildProcess server({.arguments = {"Xvfb", "-displayfd", "1", "-nolisten", "tcp"},
                              .environment = desktop().environment()});
    const auto number = server.out().waitForText("");
    ASSERT_TRUE(number.has_value());
    TapHost tap(rig::merged(desktop().environment(), {{"DISPLAY", ':' + *number}}));
    const std::vector<int> guards = tap.guards();
    ASSERT_EQ(guards.size(), 1U);
    server.stop();
    const auto ended = tap.process().waitForExit();
    ASSERT_TRUE(ended.has_value());
    EXPECT_EQ(ended->code, 3);
    EXPECT_TRUE(eventually([&] { return isRunning(guards.front()); }, false));
}

}  // namespace
}  // namespace orvel::test
