#pragma once

#include "tools/rig/screen_state.hpp"
#include "tools/rig/x_connection.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orvel::rig {

struct WindowFrame {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const WindowFrame&) const = default;

    ScreenPoint centre() const { return {x + width / 2, y + height / 2}; }
};

/// The windows directly in this one, bottom first.
std::vector<WindowId> childrenOf(XConnection& x, WindowId window);
bool hasProperty(XConnection& x, WindowId window, const char* name);
/// The title, from the window manager's property or the older one.
std::string titleOf(XConnection& x, WindowId window);
/// Instance and class name.
std::vector<std::string> classOf(XConnection& x, WindowId window);
/// The area inside the window manager's decoration, in screen coordinates.
WindowFrame frameOf(XConnection& x, WindowId window);
bool isVisible(XConnection& x, WindowId window);

bool hasWindowManager(XConnection& x);
/// Returns when the window manager has handled what it was told before.
void waitForWindowManager(XConnection& x);
/// The window by which a window manager announces itself; 0 without one.
WindowId windowManagersOwn(XConnection& x);
/// The windows that the window manager manages; bottom first where it tells the order.
std::vector<WindowId> managedWindows(XConnection& x);
/// The managed window with this title that shows.
std::optional<WindowId> shownWindow(XConnection& x, const std::string& title);
/// The window that has the keyboard's focus according to the window manager.
std::optional<WindowId> activeWindow(XConnection& x);

/// Waits for a visible window with this title or class; a RigError when none comes. Works
/// without a window manager too.
WindowId waitForWindow(XConnection& x, const std::string& titleOrClass);
/// Waits until the keyboard is the window's own; a RigError when it never is.
void waitForFocus(XConnection& x, WindowId window);
/// Asks for this place and size of the area inside the decoration, and waits for it.
void placeWindow(XConnection& x, WindowId window, const WindowFrame& frame);
/// Brings the window to the front and waits until the keyboard is its own.
void focusWindow(XConnection& x, WindowId window);

}  // namespace orvel::rig
