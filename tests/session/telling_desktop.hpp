#pragma once

#include "tests/session/own_home.hpp"
#include "tools/rig/child_process.hpp"
#include "tools/rig/embedded_desktop.hpp"
#include "tools/rig/windows.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel::test {

/// A desktop whose applications tell what they show, for this process as well.
class TellingDesktop {
public:
    TellingDesktop()
        : desktop_({.size = {},
                    .windowManager = rig::WindowManager::Kind::openbox,
                    .accessibility = rig::SessionBus::Accessibility::on}),
          bus_("DBUS_SESSION_BUS_ADDRESS", desktop_.environment().at("DBUS_SESSION_BUS_ADDRESS")) {}

    rig::EmbeddedDesktop& get() { return desktop_; }
    /// For applications: those of Qt tell as well.
    rig::Environment environment() const {
        return rig::merged(desktop_.environment(),
                           {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}, {"QT_QPA_PLATFORM", "xcb"}});
    }

private:
    rig::EmbeddedDesktop desktop_;
    ScopedVariable bus_;
};

/// An application with one window.
class Application {
public:
    /// `window` is its title or class. Returns when the window has the keyboard.
    Application(TellingDesktop& desktop, std::vector<std::string> arguments,
                const std::string& window)
        : x_(desktop.get().x()),
          process_(std::make_unique<rig::ChildProcess>(rig::Command{
              .arguments = std::move(arguments), .environment = desktop.environment()})),
          window_(rig::waitForWindow(x_, window)) {
        focus();
    }

    void focus() { rig::focusWindow(x_, window_); }
    rig::ChildProcess& process() { return *process_; }
    rig::WindowFrame frame() const { return rig::frameOf(x_, window_); }
    void moveBy(int dx, int dy) {
        rig::WindowFrame place = frame();
        place.x += dx;
        place.y += dy;
        rig::placeWindow(x_, window_, place);
    }

private:
    rig::XConnection& x_;
    std::unique_ptr<rig::ChildProcess> process_;
    rig::WindowId window_;
};

}  // namespace orvel::test
