#include "tests/session/session_test.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/key_probe.hpp"
#include "tools/rig/modifiers.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/screen_locker.hpp"
#include "tools/rig/session_bus.hpp"
#include "tools/rig/text_field_app.hpp"
#include "tools/rig/windows.hpp"
#include "tools/rig/xterm_app.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::KeyStroke;
using rig::PhysicalKey;
using rig::ProbeEvent;
using testing::AllOf;
using testing::ElementsAre;
using testing::Eq;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using Kind = ProbeEvent::Kind;

auto isKey(Kind kind, PhysicalKey key) {
    return AllOf(Field(&ProbeEvent::kind, kind), Field(&ProbeEvent::detail, key.code));
}

auto isScroll(double down, double right) {
    return AllOf(Field(&ProbeEvent::kind, Kind::scroll), Field(&ProbeEvent::down, down),
                 Field(&ProbeEvent::right, right));
}

auto isButton(Kind kind, int button, bool emulated) {
    return AllOf(Field(&ProbeEvent::kind, kind), Field(&ProbeEvent::detail, button),
                 Field(&ProbeEvent::emulated, emulated));
}

class RigTest : public SessionTest {
protected:
    static KeyProbe startProbe(KeyProbe::Mode mode = KeyProbe::Mode::xinput) {
        KeyProbe::Options options;
        options.mode = mode;
        return {desktop().environment(), desktop().x(), options};
    }

    static void putPointerInto(KeyProbe& probe) {
        state().warpPointer({probe.centreX(), probe.centreY()});
        probe.clear();
    }
};

TEST_F(RigTest, TypedTextArrivesAsTyped) {
    KeyProbe probe = startProbe();
    const std::string text = "Hello, World! [42] {a_b} ~/x?";
    keyboard().type(text);
    EXPECT_EQ(probe.text(), text);
}

TEST_F(RigTest, CoreClientsReceiveTheSameKeys) {
    KeyProbe probe = startProbe(KeyProbe::Mode::core);
    keyboard().chord({"Control_L", "c"});
    const KeyProbe::Events keys = probe.keys();
    EXPECT_THAT(keys,
                ElementsAre(isKey(Kind::keyPress, "Control_L"), isKey(Kind::keyPress, "c"),
                            isKey(Kind::keyRelease, "c"), isKey(Kind::keyRelease, "Control_L")));
    EXPECT_EQ(keys.at(1).modifiers, rig::kControl);
}

TEST_F(RigTest, ThousandsOfKeysKeepTheirOrder) {
    KeyProbe probe = startProbe();
    std::vector<KeyStroke> strokes;
    std::vector<int> typed;
    for (int count = 0; count < 5000; ++count) {
        const PhysicalKey key(PhysicalKey("a").code + count % 9);
        strokes.push_back({key, true});
        strokes.push_back({key, false});
        typed.push_back(key.code);
    }
    keyboard().play(strokes);
    std::vector<int> received;
    for (const ProbeEvent& event : probe.keys()) {
        if (event.kind == Kind::keyPress) {
            received.push_back(event.detail);
        }
    }
    EXPECT_EQ(received, typed);
}

TEST_F(RigTest, EveryNamedKeyReachesTheApplication) {
    KeyProbe probe = startProbe();
    std::vector<PhysicalKey> keys = rig::allPhysicalKeys();
    // The window manager keeps this one for screenshots.
    std::erase(keys, PhysicalKey("Print"));
    for (const PhysicalKey key : keys) {
        probe.clear();
        keyboard().tap(key);
        EXPECT_THAT(probe.keys(),
                    ElementsAre(isKey(Kind::keyPress, key), isKey(Kind::keyRelease, key)));
    }
    // Undoes what the lock keys among them did.
    for (const char* lock : {"Caps_Lock", "Num_Lock"}) {
        keyboard().tap(lock);
    }
}

TEST_F(RigTest, TheServerRepeatsAHeldKeyAndMarksTheRepeats) {
    KeyProbe probe = startProbe();
    keyboard().press("a");
    const KeyProbe::Events events = probe.waitFor([](const KeyProbe::Events& seen) {
        return std::any_of(seen.begin(), seen.end(),
                           [](const ProbeEvent& event) { return event.repeat; });
    });
    keyboard().release("a");
    EXPECT_THAT(events, testing::Contains(Field(&ProbeEvent::repeat, true)));
}

TEST_F(RigTest, TwoKeyboardsTypeIntoOneWindow) {
    KeyProbe probe = startProbe();
    keyboard().press("Shift_L");
    secondKeyboard().tap("a");
    keyboard().release("Shift_L");
    secondKeyboard().tap("b");
    EXPECT_EQ(probe.text(), "Ab");
    const KeyProbe::Events keys = probe.keys();
    EXPECT_EQ(keys.at(0).source, keyboard().id());
    EXPECT_EQ(keys.at(1).source, secondKeyboard().id());
}

TEST_F(RigTest, PullingAKeyboardOutReleasesItsKeys) {
    KeyProbe probe = startProbe();
    secondKeyboard().press("a");
    EXPECT_THAT(state().keysDownOn("kbd1"), ElementsAre(PhysicalKey("a")));
    secondKeyboard().unplug();
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    EXPECT_THROW(secondKeyboard().tap("b"), rig::RigError);
    secondKeyboard().plug();
    probe.clear();
    secondKeyboard().tap("c");
    EXPECT_EQ(probe.text(), "c");
}

TEST_F(RigTest, AKeyboardSurvivesManyPulls) {
    KeyProbe probe = startProbe();
    for (int round = 0; round < 10; ++round) {
        secondKeyboard().unplug();
        secondKeyboard().plug();
        secondKeyboard().tap("x");
    }
    EXPECT_EQ(probe.text(), "xxxxxxxxxx");
}

TEST_F(RigTest, ButtonsArriveAtTheWindowUnderThePointer) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    mouse().click(rig::Button::left);
    mouse().click(rig::Button::back);
    EXPECT_THAT(
        probe.waitForButtonsAndScrolls(4),
        ElementsAre(isButton(Kind::buttonPress, 1, false), isButton(Kind::buttonRelease, 1, false),
                    isButton(Kind::buttonPress, 8, false),
                    isButton(Kind::buttonRelease, 8, false)));
}

TEST_F(RigTest, ThePointerMovesByWhatTheMouseMoves) {
    state().warpPointer({100, 400});
    for (int step = 0; step < 40; ++step) {
        mouse().move(40, -5);
        state().idleMs();
    }
    EXPECT_EQ(state().pointer(), (rig::ScreenPoint{1700, 200}));
}

TEST_F(RigTest, AWheelOfButtonsArrivesAsButtons) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    mouse().turnWheelAsButtons(1);
    EXPECT_THAT(probe.waitForButtonsAndScrolls(2),
                ElementsAre(isButton(Kind::buttonPress, 5, false),
                            isButton(Kind::buttonRelease, 5, false)));
}

TEST_F(RigTest, AWheelOfScrollDistanceArrivesAsDerivedButtons) {
    KeyProbe probe = startProbe();
    putPointerInto(probe);
    mouse().turnWheel(-1);
    EXPECT_THAT(
        probe.waitForButtonsAndScrolls(2),
        ElementsAre(isButton(Kind::buttonPress, 4, true), isButton(Kind::buttonRelease, 4, true)));
}

TEST_F(RigTest, SmoothScrollingClientsSeeTheDistance) {
    KeyProbe probe = startProbe(KeyProbe::Mode::smooth);
    putPointerInto(probe);
    touchpad().scroll(0.125);
    touchpad().scroll(-0.5, 0.25);
    mouse().turnWheel(2);
    EXPECT_THAT(
        probe.waitForButtonsAndScrolls(4),
        ElementsAre(isScroll(0.125, 0), isScroll(-0.5, 0.25), isScroll(1, 0), isScroll(1, 0)));
}

TEST_F(RigTest, LayoutsChangeTheLettersAndNotThePlaces) {
    KeyProbe probe = startProbe();
    desktop().server().setLayout("us,de");
    state().lockLayoutGroup(1);
    probe.clear();
    keyboard().tap("z");
    EXPECT_EQ(probe.text(), "y");
    EXPECT_EQ(state().layoutGroup(), 1);
    state().lockLayoutGroup(0);
    desktop().server().setLayout("us");
}

TEST_F(RigTest, OneKeyboardMayHaveALayoutOfItsOwn) {
    KeyProbe probe = startProbe();
    desktop().server().setLayout(secondKeyboard(), "fr");
    // An application learns of the other keymap by a message of its own.
    const auto typedOn = [&](rig::Keyboard& one) {
        probe.clear();
        one.tap("q");
        return probe.text();
    };
    EXPECT_TRUE(eventually([&] { return typedOn(secondKeyboard()); }, Eq("a")));
    EXPECT_TRUE(eventually([&] { return typedOn(keyboard()); }, Eq("q")));
    desktop().server().setLayout("us");
}

TEST_F(RigTest, CapsLockShowsInTheState) {
    keyboard().tap("Caps_Lock");
    EXPECT_TRUE(state().capsLock());
    keyboard().tap("Caps_Lock");
    EXPECT_FALSE(state().capsLock());
}

TEST_F(RigTest, AnOrdinaryTerminalReceivesTextAndControlKeys) {
    rig::XtermApp terminal(desktop().home(), desktop().environment(), desktop().x());
    keyboard().type("echo ok\n");
    keyboard().chord({"Control_L", "c"});
    EXPECT_TRUE(eventually([&] { return terminal.received(); }, Eq("echo ok\r\x03")));
}

TEST_F(RigTest, AScreenLockerReceivesThePasswordAndNobodyElseDoes) {
    KeyProbe probe = startProbe();
    rig::ScreenLocker locker(desktop().environment());
    keyboard().type("S3cret word\n");
    EXPECT_EQ(locker.nextPassword(), "S3cret word");
    locker.unlock();
    keyboard().tap("a");
    EXPECT_EQ(probe.text(), "a");
}

TEST_F(RigTest, AToolkitsTextFieldReceivesText) {
    const rig::SessionBus bus(desktop().environment(), rig::SessionBus::Accessibility::off);
    rig::TextFieldApp field(rig::TextFieldApp::Kind::password, bus.environment(), desktop().x());
    keyboard().type("Top Secret\n");
    EXPECT_EQ(field.nextText(), "Top Secret");
}

TEST_F(RigTest, TheAccessibilityBusAnswers) {
    const rig::SessionBus bus(desktop().environment(), rig::SessionBus::Accessibility::on);
    EXPECT_THAT(
        rig::runTool({"gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
                      "/org/a11y/bus", "--method", "org.a11y.Bus.GetAddress"},
                     bus.environment()),
        testing::HasSubstr("unix:"));
}

TEST_F(RigTest, ScreenshotsShowTheWindows) {
    KeyProbe probe = startProbe();
    constexpr rig::Colour kProbeColour{0xff, 0xf0, 0xd0};
    EXPECT_TRUE(eventually(
        [&] { return rig::screenshot(desktop().x()).at(probe.centreX(), probe.centreY()); },
        Eq(kProbeColour)));
    const rig::Picture picture = rig::screenshot(desktop().x());
    EXPECT_EQ(picture.width, 1920);
    EXPECT_EQ(picture.height, 1080);
    EXPECT_GT(picture.colourCount(), 2U);
    const auto file = desktop().home().cache() / "screen.png";
    picture.writePng(file);
    EXPECT_GT(std::filesystem::file_size(file), 1000U);
}

TEST_F(RigTest, MonitorsComeAndGo) {
    rig::XorgServer& server = desktop().server();
    server.plugSecondMonitor({1280, 800}, rig::MonitorSide::rightOfFirst);
    EXPECT_TRUE(eventually([] { return rig::screenshot(desktop().x()).width; }, Eq(3200)));
    server.unplugSecondMonitor();
    EXPECT_TRUE(eventually([] { return rig::screenshot(desktop().x()).width; }, Eq(1920)));
    server.resizeMonitor({1280, 800});
    EXPECT_TRUE(eventually([] { return rig::screenshot(desktop().x()).width; }, Eq(1280)));
    server.resizeMonitor({1920, 1080});
}

TEST_F(RigTest, TheTouchpadIsKnownAsOne) {
    const std::string properties = rig::runTool(
        {"xinput", "list-props", std::to_string(touchpad().id())}, desktop().environment());
    EXPECT_THAT(properties, testing::HasSubstr("libinput Tapping Enabled"));
}

TEST(EmbeddedDesktopTest, LeavesNothingRunningAndNothingOnDisk) {
    std::filesystem::path home;
    {
        rig::EmbeddedDesktop desktop;
        KeyProbe probe(desktop.environment(), desktop.x());
        rig::XtermApp terminal(desktop.home(), desktop.environment(), desktop.x());
        home = desktop.home().path();
        EXPECT_THAT(rig::processesOf(home), testing::SizeIs(testing::Ge(5)));
    }
    EXPECT_TRUE(eventually([&] { return rig::processesOf(home); }, IsEmpty()));
    EXPECT_FALSE(std::filesystem::exists(home));
}

TEST(ScratchHomeTest, EndsWithWhoeverStillLivesInIt) {
    std::optional<rig::ScratchHome> home(std::in_place);
    const rig::Environment environment = home->environment();
    // Has left its process group when its parent ends.
    rig::runTool({"sh", "-c", "setsid sh -c 'tail -f /dev/null >/dev/null 2>&1 &'; true"},
                 environment);
    const std::filesystem::path path = home->path();
    EXPECT_TRUE(eventually([&] { return rig::processesOf(path); }, testing::SizeIs(1)));
    home.reset();
    EXPECT_THAT(rig::processesOf(path), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(EmbeddedDesktopTest, SeveralRunSideBySide) {
    rig::EmbeddedDesktop first;
    rig::EmbeddedDesktop second(
        {.size = {1280, 800}, .windowManager = rig::WindowManager::Kind::xfwm4});
    KeyProbe firstProbe(first.environment(), first.x());
    KeyProbe secondProbe(second.environment(), second.x());
    first.keyboard().type("one");
    second.keyboard().type("two");
    EXPECT_EQ(firstProbe.text(), "one");
    EXPECT_EQ(secondProbe.text(), "two");
    EXPECT_EQ(rig::screenshot(second.x()).width, 1280);
}

TEST(PhysicalKeyTest, UnknownNamesAreErrors) {
    EXPECT_THROW(PhysicalKey("Hyperspace"), rig::RigError);
    EXPECT_THROW(rig::strokesFor("\xc3\xa4"), rig::RigError);
}

}  // namespace
}  // namespace orvel::test
