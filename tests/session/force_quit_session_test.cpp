#include "tests/session/session_test.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/accessible_app.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/plain_windows.hpp"
#include "tools/rig/windows.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>

namespace orvel::test {
namespace {

using rig::PlainWindows;

constexpr const char* kTitle = "强制退出应用程序";

std::string buildFolder() { return std::getenv("ORVEL_BUILD_DIR"); }

/// The Force Quit window among running applications, driven from the keyboard.
class ForceQuitSession : public SessionTest {
protected:
    static rig::ChildProcess start() {
        return rig::ChildProcess(
            {.arguments = {buildFolder() + "/orvel-force-quit"},
             .environment = rig::merged(desktop().environment(),
                                        {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}})});
    }
    static rig::WindowId window() {
        const auto shown = rig::waitForWindow(desktop().x(), kTitle);
        rig::waitForFocus(desktop().x(), shown);
        return shown;
    }
    static rig::Picture pictureOf(rig::WindowId shown) {
        return rig::pictureOf(desktop().x(), shown);
    }
    /// Presses the key and waits until the window has drawn what came of it.
    static void press(rig::WindowId shown, const char* key) {
        const auto isDrawn = [&] { return pictureOf(shown).colourCount() > 1; };
        ASSERT_TRUE(eventually(isDrawn, true));
        const auto before = pictureOf(shown);
        keyboard().tap(key);
        EXPECT_TRUE(eventually([&] { return pictureOf(shown) != before; }, true)) << key;
    }
};

TEST_F(ForceQuitSession, EndsTheHungApplicationThatWasInFront) {
    PlainWindows other(desktop().environment(), desktop().x());
    other.open({.title = "other", .className = "Other"});
    PlainWindows hung(desktop().environment(), desktop().x());
    rig::focusWindow(desktop().x(), hung.open({.title = "hung", .className = "Hung"}));
    hung.process().signal(SIGSTOP);
    auto dialog = start();
    const auto shown = window();
    press(shown, "Return");
    press(shown, "Return");
    const auto end = hung.process().waitForExit();
    ASSERT_TRUE(end);
    EXPECT_EQ(end->signal, SIGKILL);
    EXPECT_TRUE(other.process().running());
    keyboard().tap("Escape");
    EXPECT_EQ(dialog.waitForExit(), (rig::ExitStatus{.code = 0, .signal = {}}));
}

TEST_F(ForceQuitSession, ArrowsChooseAndEscapeEndsNothing) {
    PlainWindows first(desktop().environment(), desktop().x());
    first.open({.title = "first", .className = "First"});
    PlainWindows second(desktop().environment(), desktop().x());
    rig::focusWindow(desktop().x(), second.open({.title = "second", .className = "Second"}));
    auto dialog = start();
    const auto shown = window();
    for (const auto* key : {"Return", "Escape", "Up", "Return", "Return"}) press(shown, key);
    ASSERT_TRUE(first.process().waitForExit());
    EXPECT_TRUE(second.process().running());
    keyboard().tap("Escape");
    EXPECT_TRUE(dialog.waitForExit());
}

TEST_F(ForceQuitSession, ASecondStartShowsTheFirstWindowAgain) {
    auto dialog = start();
    const auto shown = window();
    PlainWindows other(desktop().environment(), desktop().x());
    rig::focusWindow(desktop().x(), other.open({.title = "other", .className = "Other"}));
    auto again = start();
    EXPECT_EQ(again.waitForExit(), (rig::ExitStatus{.code = 0, .signal = {}}));
    EXPECT_TRUE(
        eventually([] { return rig::activeWindow(desktop().x()); }, testing::Optional(shown)));
    dialog.stop();
}

/// The window as a screen reader shows and works it.
class ForceQuitAccess : public ForceQuitSession {
protected:
    static void SetUpTestSuite() {
        startDesktop({.size = {},
                      .windowManager = rig::WindowManager::Kind::openbox,
                      .accessibility = rig::SessionBus::Accessibility::on});
    }
    static rig::AccessibleApp seen() { return {desktop().environment(), "orvel-force-quit"}; }
};

TEST_F(ForceQuitAccess, AScreenReaderFindsTheListTheChosenOneAndTheButton) {
    PlainWindows other(desktop().environment(), desktop().x());
    other.open({.title = "other", .className = "Other"});
    PlainWindows front(desktop().environment(), desktop().x());
    rig::focusWindow(desktop().x(), front.open({.title = "front", .className = "Front"}));
    auto dialog = start();
    window();
    seen().waitFor("list", "正在运行的应用程序");
    EXPECT_TRUE(seen().waitFor("list item", "Front").is("selected"));
    EXPECT_FALSE(seen().waitFor("list item", "Other").is("selected"));
    seen().waitFor("push button", "强制退出");
    EXPECT_FALSE(seen().find("push button", "取消").has_value()) << "nothing is asked yet";
    dialog.stop();
}

TEST_F(ForceQuitAccess, AScreenReaderChoosesAnApplicationAndEndsIt) {
    PlainWindows hung(desktop().environment(), desktop().x());
    hung.open({.title = "hung", .className = "Hung"});
    hung.process().signal(SIGSTOP);
    PlainWindows front(desktop().environment(), desktop().x());
    rig::focusWindow(desktop().x(), front.open({.title = "front", .className = "Front"}));
    auto dialog = start();
    window();
    seen().act(seen().waitFor("list item", "Hung"), "Press");
    const auto press = [](const char* name) {
        seen().act(seen().waitFor("push button", name), "Press");
    };
    press("强制退出");
    seen().waitFor("push button", "取消");
    const auto shown = seen().items();
    const auto isQuestion = [](const rig::Accessible& item) {
        return item.role == "dialog" && item.name.find("Hung") != std::string::npos;
    };
    EXPECT_TRUE(std::ranges::any_of(shown, isQuestion)) << testing::PrintToString(shown);
    press("取消");
    EXPECT_TRUE(eventually([] { return seen().find("push button", "取消").has_value(); }, false));
    EXPECT_TRUE(hung.process().running());
    press("强制退出");
    seen().waitFor("push button", "取消");
    // That of the question: the one behind it is not told of meanwhile.
    press("强制退出");
    EXPECT_TRUE(hung.process().waitForExit());
    EXPECT_TRUE(front.process().running());
    dialog.stop();
}

TEST_F(ForceQuitSession, SaysWhichDisplayItCannotOpen) {
    rig::ChildProcess dialog(
        {.arguments = {buildFolder() + "/orvel-force-quit"},
         .environment = rig::merged(desktop().environment(), {{"DISPLAY", ":4711"}})});
    EXPECT_EQ(dialog.waitForExit(), (rig::ExitStatus{.code = 1, .signal = {}}));
    EXPECT_TRUE(dialog.err().waitForText(":4711"));
}

}  // namespace
}  // namespace orvel::test
