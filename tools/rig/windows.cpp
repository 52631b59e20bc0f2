#include "tools/rig/windows.hpp"

#include "tools/rig/poll_until.hpp"
#include "tools/rig/rig_error.hpp"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <array>
#include <memory>

namespace orvel::rig {
namespace {

struct Property {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    std::unique_ptr<unsigned char, decltype(&XFree)> data{nullptr, XFree};
};

Property readProperty(XConnection& x, Window window, const char* name) {
    constexpr long kMaxLength = 65536;
    Property property;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(x.get(), window, x.atom(name), 0, kMaxLength, False, AnyPropertyType,
                       &property.type, &property.format, &property.count, &left, &data);
    property.data.reset(data);
    return property;
}

std::vector<Window> readWindows(XConnection& x, Window window, const char* name) {
    const Property property = readProperty(x, window, name);
    if (property.type != XA_WINDOW || property.format != 32) {
        return {};
    }
    // Xlib hands 32-bit properties out as longs, which is what a Window is.
    const auto* first =
        reinterpret_cast<const Window*>(static_cast<const void*>(property.data.get()));
    return {first, first + property.count};
}

std::string readText(XConnection& x, Window window, const char* name) {
    const Property property = readProperty(x, window, name);
    if (property.format != 8 || !property.data) {
        return {};
    }
    return {reinterpret_cast<const char*>(property.data.get()), property.count};
}

bool matches(XConnection& x, Window window, const std::string& titleOrClass) {
    const std::vector<std::string> classes = classOf(x, window);
    return titleOf(x, window) == titleOrClass ||
           std::find(classes.begin(), classes.end(), titleOrClass) != classes.end();
}

std::optional<Window> findVisible(XConnection& x, Window top, const std::string& titleOrClass) {
    for (const Window child : childrenOf(x, top)) {
        if (matches(x, child, titleOrClass) && isVisible(x, child)) {
            return child;
        }
        if (const auto inside = findVisible(x, child, titleOrClass)) {
            return inside;
        }
    }
    return std::nullopt;
}

/// What a pager asks of the window manager about a window.
void askWindowManager(XConnection& x, Window window, const char* request,
                      const std::array<long, 5>& data) {
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = window;
    message.xclient.message_type = x.atom(request);
    message.xclient.format = 32;
    std::copy(data.begin(), data.end(), message.xclient.data.l);
    XSendEvent(x.get(), x.root(), False, SubstructureRedirectMask | SubstructureNotifyMask,
               &message);
}

void askToActivate(XConnection& x, Window window) {
    constexpr long kFromPager = 2;
    askWindowManager(x, window, "_NET_ACTIVE_WINDOW", {kFromPager});
}

void askForFrame(XConnection& x, WindowId window, const WindowFrame& frame) {
    // All four values given, by a pager, for the client area and not for the decoration.
    constexpr long kFlags = StaticGravity | 15 << 8 | 2 << 12;
    askWindowManager(x, window, "_NET_MOVERESIZE_WINDOW",
                     {kFlags, frame.x, frame.y, frame.width, frame.height});
}

// Toolkits put the focus on a window of their own inside the managed one.
bool isInside(XConnection& x, Window window, Window outer) {
    while (window != None && window != PointerRoot) {
        if (window == outer) {
            return true;
        }
        Window root = None;
        Window parent = None;
        Window* list = nullptr;
        unsigned count = 0;
        if (XQueryTree(x.get(), window, &root, &parent, &list, &count) == 0) {
            return false;
        }
        XFree(list);
        window = parent;
    }
    return false;
}

bool hasFocus(XConnection& x, Window window) {
    Window focused = None;
    int revertTo = 0;
    XGetInputFocus(x.get(), &focused, &revertTo);
    return isInside(x, focused, window);
}

}  // namespace

std::vector<WindowId> childrenOf(XConnection& x, WindowId window) {
    Window root = None;
    Window parent = None;
    Window* list = nullptr;
    unsigned count = 0;
    if (XQueryTree(x.get(), window, &root, &parent, &list, &count) == 0) return {};
    const std::unique_ptr<Window, decltype(&XFree)> owner(list, XFree);
    return {list, list + count};
}

bool hasProperty(XConnection& x, WindowId window, const char* name) {
    return readProperty(x, window, name).type != None;
}

std::string titleOf(XConnection& x, Window window) {
    const std::string title = readText(x, window, "_NET_WM_NAME");
    return title.empty() ? readText(x, window, "WM_NAME") : title;
}

std::vector<std::string> classOf(XConnection& x, Window window) {
    const std::string both = readText(x, window, "WM_CLASS");
    const auto middle = both.find('\0');
    if (middle == std::string::npos) {
        return {};
    }
    return {both.substr(0, middle), std::string(both.c_str() + middle + 1)};
}

WindowFrame frameOf(XConnection& x, Window window) {
    XWindowAttributes attributes{};
    Window child = None;
    WindowFrame frame;
    if (XGetWindowAttributes(x.get(), window, &attributes) == 0) {
        throw RigError("the window is gone");
    }
    XTranslateCoordinates(x.get(), window, x.root(), 0, 0, &frame.x, &frame.y, &child);
    frame.width = attributes.width;
    frame.height = attributes.height;
    return frame;
}

bool isVisible(XConnection& x, Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(x.get(), window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

bool hasWindowManager(XConnection& x) { return windowManagersOwn(x) != None; }

WindowId windowManagersOwn(XConnection& x) {
    const char* const kMark = "_NET_SUPPORTING_WM_CHECK";
    const std::vector<WindowId> named = readWindows(x, x.root(), kMark);
    // The root keeps the name of one that was killed; its window does not live on.
    const bool isAlive = !named.empty() && readWindows(x, named.front(), kMark) == named;
    return isAlive ? named.front() : None;
}

std::vector<WindowId> managedWindows(XConnection& x) {
    const std::vector<WindowId> stacked = readWindows(x, x.root(), "_NET_CLIENT_LIST_STACKING");
    // xfwm4 sets the stacking order only once it has changed.
    return stacked.empty() ? readWindows(x, x.root(), "_NET_CLIENT_LIST") : stacked;
}

std::optional<Window> activeWindow(XConnection& x) {
    const std::vector<Window> active = readWindows(x, x.root(), "_NET_ACTIVE_WINDOW");
    if (active.empty() || active.front() == None) {
        return std::nullopt;
    }
    return active.front();
}

void waitForWindowManager(XConnection& x) {
    const Window window = XCreateSimpleWindow(x.get(), x.root(), 0, 0, 1, 1, 0, 0, 0);
    askWindowManager(x, window, "_NET_REQUEST_FRAME_EXTENTS", {});
    const bool isAnswered = pollUntil([&] { return hasProperty(x, window, "_NET_FRAME_EXTENTS"); });
    XDestroyWindow(x.get(), window);
    if (!isAnswered) throw RigError("the window manager does not answer");
}

std::optional<WindowId> shownWindow(XConnection& x, const std::string& title) {
    for (const WindowId window : managedWindows(x)) {
        if (titleOf(x, window) == title && isVisible(x, window)) return window;
    }
    return std::nullopt;
}

Window waitForWindow(XConnection& x, const std::string& titleOrClass) {
    const auto found = pollUntil([&] { return findVisible(x, x.root(), titleOrClass); },
                                 [](const std::optional<Window>& window) { return !!window; });
    if (!found) {
        throw RigError("no window '" + titleOrClass + "' appears");
    }
    return *found.last;
}

void focusWindow(XConnection& x, Window window) {
    if (hasWindowManager(x)) {
        askToActivate(x, window);
    } else {
        XRaiseWindow(x.get(), window);
        XSetInputFocus(x.get(), window, RevertToPointerRoot, CurrentTime);
    }
    waitForFocus(x, window);
}

void waitForFocus(XConnection& x, WindowId window) {
    if (!pollUntil([&] { return hasFocus(x, window); })) {
        throw RigError("window '" + titleOf(x, window) + "' does not get the focus");
    }
}

void placeWindow(XConnection& x, WindowId window, const WindowFrame& frame) {
    askForFrame(x, window, frame);
    // Terminals round their size to whole characters, so only the corner is certain.
    const auto placed =
        pollUntil([&] { return frameOf(x, window); },
                  [&](const WindowFrame& seen) { return seen.x == frame.x && seen.y == frame.y; });
    if (!placed) {
        throw RigError("window '" + titleOf(x, window) + "' stays at " +
                       std::to_string(placed.last.x) + "," + std::to_string(placed.last.y));
    }
}

}  // namespace orvel::rig
