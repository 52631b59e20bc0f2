#pragma once

#include "tests/session/tap_session.hpp"
#include "tools/rig/accessible_app.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/tray.hpp"

#include <optional>
#include <string>

namespace orvel::test {

/// The settings panel of the program itself, on a real desktop, used with mouse and keyboard.
class PanelSessionTest : public TapSessionTest {
protected:
    static void SetUpTestSuite();
    void SetUp() override { rig::writeSettings(environment(), {}); }

    /// That of the desktop, with applications that tell assistive programs what they show.
    static rig::Environment environment();
    static std::string frontDoor();
    static rig::OrvelProgram start(const rig::Settings& settings = {});
    /// Runs the front door with these arguments to its end.
    static rig::ExitStatus run(std::vector<std::string> arguments);

    /// The panel's window while it is on screen.
    static std::optional<rig::WindowId> panel();
    static bool isPanelOpen() { return panel().has_value(); }
    /// Returns when the panel shows its content and has the keyboard.
    static void waitForPanel();

    static void moveTo(rig::ScreenPoint point);
    static void moveTo(const rig::WindowFrame& frame) { moveTo(frame.centre()); }
    template <class Place>
    static void click(const Place& place, rig::Button button = rig::Button::left) {
        moveTo(place);
        mouse().click(button);
    }
    /// Clicks the control of that role and name.
    static void clickOn(const std::string& role, const std::string& name) {
        click(seen().waitFor(role, name).frame);
    }
    /// The program as a screen reader sees it.
    static rig::AccessibleApp seen() { return {environment(), "orvel"}; }
    static rig::Accessible switchOf(const std::string& card) {
        return seen().waitFor("check box", card);
    }
    static bool isOn(const std::string& card) { return switchOf(card).is("checked"); }

    /// Where nothing is but the desktop.
    static constexpr rig::ScreenPoint kElsewhere{40, 700};
};

}  // namespace orvel::test
