#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/plain_windows.hpp"
#include "tools/rig/text_field_app.hpp"
#include "tools/rig/windows.hpp"
#include "tools/rig/xterm_app.hpp"

#include <X11/Xlib.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::OrvelProgram;
using rig::WindowFrame;
using testing::AllOf;
using testing::Contains;
using testing::Field;
using testing::IsSupersetOf;
using testing::Lt;
using testing::Not;

/// What the program does to real windows and real keys, driven from the devices.
class OrvelHabitsTest : public TapSessionTest {
protected:
    void SetUp() override { rig::writeSettings(environment(), {}); }

    static const rig::Environment& environment() { return desktop().environment(); }
    static OrvelProgram start(rig::Settings settings) {
        rig::writeSettings(environment(), settings);
        return {ORVEL_PROGRAM, environment(), {}};
    }
    /// Under the usual mapping the Super key is Win.
    static rig::Settings withUsualMapping(const std::string& card) {
        rig::Settings settings = rig::usualMapping();
        settings[card] = true;
        return settings;
    }
    /// How many windows show, those that the window manager draws for itself included.
    static unsigned shownWindows() {
        rig::XConnection& x = desktop().x();
        Window root = None;
        Window parent = None;
        Window* list = nullptr;
        unsigned count = 0;
        XQueryTree(x.get(), x.root(), &root, &parent, &list, &count);
        const std::unique_ptr<Window, decltype(&XFree)> owner(list, XFree);
        return static_cast<unsigned>(std::count_if(
            list, list + count, [&](Window window) { return rig::isVisible(x, window); }));
    }
    static void win(const char* key) { keyboard().chord({"Super_L", key}); }
    /// That window, which has the keyboard, at the right edge and then at the left one.
    static void expectSnappingToBothEdges(rig::WindowId window) {
        const int screen = rig::frameOf(desktop().x(), desktop().x().root()).width;
        const auto frame = [&] { return rig::frameOf(desktop().x(), window); };
        const auto right = [&] { return screen - frame().x - frame().width; };
        // The rest is the window manager's frame.
        const auto isAtEdge = AllOf(testing::Ge(0), Lt(10));
        win("Right");
        EXPECT_TRUE(eventually(right, isAtEdge));
        EXPECT_GE(frame().x, screen / 3);
        win("Left");
        win("Left");
        EXPECT_TRUE(eventually([&] { return frame().x; }, isAtEdge));
    }
};

TEST_F(OrvelHabitsTest, WinWithArrowsSnapsAndRestoresARealWindow) {
    KeyProbe probe = startProbe();
    const OrvelProgram orvel = start(withUsualMapping("card_snap"));
    const auto frame = [&] { return rig::frameOf(desktop().x(), probe.window()); };
    const WindowFrame before = frame();

    win("Left");
    EXPECT_TRUE(eventually(frame, AllOf(Field(&WindowFrame::x, Lt(10)),
                                        Field(&WindowFrame::width, testing::Ge(940)))));
    win("Right");
    EXPECT_TRUE(eventually(frame, before));
    win("Right");
    EXPECT_TRUE(eventually(frame, Field(&WindowFrame::x, testing::Ge(950))));
    win("Up");
    EXPECT_TRUE(eventually(frame, Field(&WindowFrame::width, testing::Ge(1900))));
    win("Down");
    EXPECT_TRUE(eventually(frame, before));
    win("Down");
    EXPECT_TRUE(eventually([&] { return rig::isVisible(desktop().x(), probe.window()); }, false));
}

TEST_F(OrvelHabitsTest, AWindowSnapsToTheSizeThatTheMonitorHasJustGot) {
    KeyProbe probe = startProbe();
    const OrvelProgram orvel = start(withUsualMapping("card_snap"));
    const auto width = [&] { return rig::frameOf(desktop().x(), probe.window()).width; };
    const int before = width();
    for (const int screen : {1280, 1920, 1280, 1920}) {
        SCOPED_TRACE(screen);
        desktop().server().resizeMonitor({screen, screen == 1280 ? 800 : 1080});
        win("Up");
        EXPECT_TRUE(eventually(width, AllOf(testing::Ge(screen - 20), testing::Le(screen))));
        win("Down");
        EXPECT_TRUE(eventually(width, before));
    }
}

TEST_F(OrvelHabitsTest, AWindowThatMustBeWideIsSnappedToTheEdgeAllTheSame) {
    rig::PlainWindows app(environment(), desktop().x());
    const auto window = app.open({.title = "wide", .width = 1200, .minWidth = 1100});
    rig::focusWindow(desktop().x(), window);
    const OrvelProgram orvel = start(withUsualMapping("card_snap"));
    expectSnappingToBothEdges(window);
    EXPECT_TRUE(
        eventually([&] { return rig::frameOf(desktop().x(), window).width; }, testing::Eq(1100)));
}

TEST_F(OrvelHabitsTest, AWindowOfWholeCellsIsSnappedToTheEdgeAllTheSame) {
    const rig::XtermApp terminal(desktop().home(), environment(), desktop().x());
    const OrvelProgram orvel = start(withUsualMapping("card_snap"));
    expectSnappingToBothEdges(terminal.window());
}

TEST_F(OrvelHabitsTest, AltWithTabBringsTheOtherWindowInFront) {
    KeyProbe behind = startProbe();
    KeyProbe inFront(environment(), desktop().x(), {.title = "in front"});
    const OrvelProgram orvel = start({{"card_tab", true}});
    const auto active = [] { return rig::activeWindow(desktop().x()); };
    ASSERT_TRUE(eventually(active, testing::Optional(inFront.window())));
    const unsigned before = shownWindows();
    keyboard().press("Alt_L");
    keyboard().press("Tab");
    // A switcher that does not show yet would miss the release that ends it.
    EXPECT_TRUE(eventually(shownWindows, testing::Gt(before)));
    keyboard().release("Tab");
    keyboard().release("Alt_L");
    EXPECT_TRUE(eventually(active, testing::Optional(behind.window())));
    EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); }, testing::IsEmpty()));
}

TEST_F(OrvelHabitsTest, AKeyNamedAsFnTurnsArrowsIntoHomeAndEnd) {
    const auto table = std::filesystem::path(environment().at("XDG_CONFIG_HOME")) / "orvel";
    std::filesystem::create_directories(table);
    std::ofstream(table / "platform.conf") << "[keys]\nfn = Menu\n";
    KeyProbe probe = startProbe();
    const OrvelProgram orvel = start({{"card_fn", true}});
    keyboard().chord({"Menu", "Up"});
    keyboard().chord({"Menu", "Down"});
    EXPECT_TRUE(eventually([&] { return spelled(probe.keys()); },
                           AllOf(IsSupersetOf({"+Prior", "-Prior", "+Next", "-Next"}),
                                 Not(Contains("+Up")), Not(Contains("+Menu")))));
    std::filesystem::remove(table / "platform.conf");
}

TEST_F(OrvelHabitsTest, ShiftBackspaceDeletesForwardInATextField) {
    const OrvelProgram orvel = start({{"card_eject", true}});
    rig::TextFieldApp field(rig::TextFieldApp::Kind::plain, environment(), desktop().x());
    keyboard().type("xyz");
    keyboard().tap("Home");
    keyboard().chord({"Shift_L", "BackSpace"});
    keyboard().type("\n");
    EXPECT_EQ(field.nextText(), "yz");
}

TEST_F(OrvelHabitsTest, AHungApplicationInFrontHoldsUpNeitherKeysNorItsOwnWindow) {
    KeyProbe hung = startProbe();
    const OrvelProgram orvel = start(withUsualMapping("card_snap"));
    ASSERT_TRUE(eventually([] { return rig::activeWindow(desktop().x()); },
                           testing::Optional(hung.window())));
    hung.process().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    win("Left");
    keyboard().press("a");
    EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); },
                           testing::ElementsAre(rig::PhysicalKey("a"))));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
    keyboard().release("a");
    EXPECT_TRUE(eventually(
        [&] { return rig::frameOf(desktop().x(), hung.window()); },
        AllOf(Field(&WindowFrame::x, Lt(10)), Field(&WindowFrame::width, testing::Ge(940)))));
    hung.process().signal(SIGCONT);
    EXPECT_TRUE(eventually([&] { return hung.text(); }, std::string("a")));
}

}  // namespace
}  // namespace orvel::test
