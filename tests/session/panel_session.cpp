#include "tests/session/panel_session.hpp"

#include "tests/support/poll_until.hpp"
#include "tools/rig/windows.hpp"

#include <algorithm>

namespace orvel::test {

void PanelSessionTest::SetUpTestSuite() {
    startDesktop({.size = {},
                  .windowManager = rig::WindowManager::Kind::openbox,
                  .accessibility = rig::SessionBus::Accessibility::on});
}

rig::Environment PanelSessionTest::environment() {
    return rig::merged(desktop().environment(), {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}});
}

std::string PanelSessionTest::frontDoor() { return ORVEL_PROGRAM; }

rig::OrvelProgram PanelSessionTest::start(const rig::Settings& settings) {
    rig::writeSettings(environment(), settings);
    return {frontDoor(), environment()};
}

rig::ExitStatus PanelSessionTest::run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), frontDoor());
    rig::ChildProcess program({.arguments = std::move(arguments), .environment = environment()});
    return program.waitForExit().value_or(rig::ExitStatus{});
}

std::optional<rig::WindowId> PanelSessionTest::panel() {
    return rig::shownWindow(desktop().x(), "Orvel");
}

void PanelSessionTest::waitForPanel() {
    ASSERT_TRUE(eventually([] { return isPanelOpen(); }, true));
    rig::waitForFocus(desktop().x(), *panel());
}

void PanelSessionTest::moveTo(rig::ScreenPoint point) {
    desktop().pointAt(point);
    ASSERT_EQ(state().pointer(), point);
}

}  // namespace orvel::test
