#include "tools/rig/window_manager.hpp"

#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

#include <X11/Xlib.h>

#include <algorithm>
#include <utility>
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
    : environment_(environment), x_(x) {
    start(kind, {});
}

void WindowManager::replaceBy(Kind kind) {
    const auto before = std::move(process_);
    start(kind, {"--replace"});
    if (!before->waitForExit()) throw RigError("the old window manager stays");
}

void WindowManager::start(Kind kind, const std::vector<std::string>& options) {
    Command command = commandFor(kind, environment_);
    command.arguments.insert(command.arguments.end(), options.begin(), options.end());
    // Until the next one says something else, the old one speaks.
    const WindowId before = windowManagersOwn(x_);
    process_ = std::make_unique<ChildProcess>(command);
    const bool announced = pollUntil([&] {
        const WindowId own = windowManagersOwn(x_);
        return (own != None && own != before) || !process_->running();
    });
    if (!announced || !process_->running() || !takesWindows(x_)) {
        throw RigError("the window manager does not start: " + process_->err().text());
    }
}

}  // namespace orvel::rig
