#include "tools/rig/window_manager.hpp"

#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

#include <X11/Xlib.h>

#include <algorithm>
#include <vector>

namespace orvel::rig {
namespace {

Command commandFor(WindowManager::Kind kind, const Environment& environment) {
    if (kind == WindowManager::Kind::openbox) {
        return {.arguments = {"openbox", "--sm-disable"}, .environment = environment};
    }
    // Its own shadows and fading would make every picture depend on the moment it was taken.
    return {.arguments = {"xfwm4", "--compositor=off"}, .environment = environment};
}

bool manages(XConnection& x, WindowId window) {
    const std::vector<WindowId> managed = managedWindows(x);
    return std::find(managed.begin(), managed.end(), window) != managed.end();
}

// A window manager announces itself before it is ready, and may overlook a window that is mapped
// in between. So a window of ours goes first, as often as it takes.
bool takesWindows(XConnection& x) {
    constexpr std::chrono::milliseconds kPerTry{30};
    const WindowId window = XCreateSimpleWindow(x.get(), x.root(), 0, 0, 10, 10, 0, 0, 0);
    const bool taken = pollUntil([&] {
        XMapWindow(x.get(), window);
        const bool managed = pollUntil([&] { return manages(x, window); }, kPerTry);
        XUnmapWindow(x.get(), window);
        return managed;
    });
    XDestroyWindow(x.get(), window);
    return taken && pollUntil([&] { return !manages(x, window); });
}

}  // namespace

WindowManager::WindowManager(Kind kind, const Environment& environment, XConnection& x)
    : process_(commandFor(kind, environment)) {
    const bool announced = pollUntil([&] { return hasWindowManager(x) || !process_.running(); });
    if (!announced || !process_.running() || !takesWindows(x)) {
        throw RigError("the window manager does not start: " + process_.err().text());
    }
}

}  // namespace orvel::rig
