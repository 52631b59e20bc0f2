#pragma once

#include "tools/rig/scratch_home.hpp"
#include "tools/rig/screen_state.hpp"
#include "tools/rig/session_bus.hpp"
#include "tools/rig/window_manager.hpp"
#include "tools/rig/xorg_server.hpp"

#include <optional>

namespace orvel::rig {

/// A whole desktop without a screen or a keyboard: a home, an X server with test devices, a message
/// bus and a window manager. It is ready when the constructor returns, and nothing of it is left
/// after.
class EmbeddedDesktop {
public:
    struct Options {
        ScreenSize size;
        /// Absent: windows are left to themselves.
        std::optional<WindowManager::Kind> windowManager = WindowManager::Kind::openbox;
        SessionBus::Accessibility accessibility = SessionBus::Accessibility::off;
    };

    EmbeddedDesktop() : EmbeddedDesktop(Options()) {}
    explicit EmbeddedDesktop(const Options& options);

    ScratchHome& home() { return home_; }
    XorgServer& server() { return server_; }
    XConnection& x() { return server_.x(); }
    ScreenState& state() { return state_; }
    Keyboard& keyboard() { return server_.keyboard(); }
    Pointer& mouse() { return server_.mouse(); }
    /// Moves the mouse to this point of the screen.
    void pointAt(ScreenPoint point);
    /// Only on a desktop that has one.
    WindowManager& windowManager() { return *windowManager_; }
    /// For a program that shall run in this desktop.
    const Environment& environment() const { return bus_.environment(); }

private:
    ScratchHome home_;
    XorgServer server_;
    ScreenState state_;
    // Without one, toolkits start a bus by themselves that nobody ends.
    SessionBus bus_;
    std::optional<WindowManager> windowManager_;
};

}  // namespace orvel::rig
