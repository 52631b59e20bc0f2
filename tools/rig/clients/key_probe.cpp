// A plain X application that prints every input event it is given, one line each.
//
//   orvel-rig-key-probe TITLE WIDTHxHEIGHT+X+Y core|xinput|smooth
//
// core    the events of the core protocol, which old applications use
// xinput  the events of the X input extension
// smooth  the same in the way of a toolkit that scrolls smoothly: scroll distance counts, and
//         the buttons that the server derives from it are dropped
//
// "sync WORD" on standard input is answered by "synced WORD" after everything that the server
// had for us by then has been printed. The end of standard input ends the program.

#include "tools/rig/clients/line_input.hpp"
#include "tools/rig/clients/scroll_axes.hpp"
#include "tools/rig/probe_event.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <map>
#include <memory>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace orvel::rig {
namespace {

using Kind = ProbeEvent::Kind;

enum class Mode { core, xinput, smooth };

struct Options {
    std::string title;
    std::string geometry;
    Mode mode = Mode::xinput;
};

std::int64_t nowUs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

class KeyProbeClient {
public:
    explicit KeyProbeClient(const Options& options)
        : mode_(options.mode), display_(XOpenDisplay(nullptr), XCloseDisplay) {
        if (!display_) {
            std::cerr << "cannot connect to the display\n";
            std::exit(2);
        }
        scrollAxes_ = std::make_unique<ScrollAxes>(display_.get());
        int firstEvent = 0;
        int firstError = 0;
        XQueryExtension(display_.get(), "XInputExtension", &xinputOpcode_, &firstEvent,
                        &firstError);
        int major = 2;
        int minor = 2;
        XIQueryVersion(display_.get(), &major, &minor);
        makeWindow(options);
    }

    void run() {
        std::array<pollfd, 2> waits{
            {{ConnectionNumber(display_.get()), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        while (true) {
            printPending();
            std::cout.flush();
            if (poll(waits.data(), waits.size(), -1) < 0) {
                return;
            }
            const auto told = [this](const std::string& command) { obey(command); };
            if (waits[1].revents != 0 && !input_.read(told)) {
                return;
            }
        }
    }

private:
    void makeWindow(const Options& options) {
        XSizeHints hints{};
        int gravity = 0;
        hints.flags = USPosition | USSize;
        XWMGeometry(display_.get(), DefaultScreen(display_.get()), options.geometry.c_str(),
                    "800x600+100+100", 0, &hints, &hints.x, &hints.y, &hints.width, &hints.height,
                    &gravity);
        window_ = XCreateSimpleWindow(display_.get(), DefaultRootWindow(display_.get()), hints.x,
                                      hints.y, static_cast<unsigned>(hints.width),
                                      static_cast<unsigned>(hints.height), 0, 0, 0xfff0d0);
        XWMHints wmHints{};
        wmHints.flags = InputHint;
        wmHints.input = True;
        Xutf8SetWMProperties(display_.get(), window_, options.title.c_str(), options.title.c_str(),
                             nullptr, 0, &hints, &wmHints, nullptr);
        if (mode_ == Mode::core) {
            XSelectInput(display_.get(), window_,
                         KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask |
                             PointerMotionMask | FocusChangeMask);
        } else {
            select(window_, XIAllMasterDevices,
                   {XI_KeyPress, XI_KeyRelease, XI_ButtonPress, XI_ButtonRelease, XI_Motion,
                    XI_FocusIn, XI_FocusOut, XI_Enter});
            select(DefaultRootWindow(display_.get()), XIAllDevices, {XI_HierarchyChanged});
        }
        XMapRaised(display_.get(), window_);
        XFlush(display_.get());
    }

    void select(Window window, int device, std::initializer_list<int> kinds) {
        std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
        for (const int kind : kinds) {
            bits[static_cast<std::size_t>(kind >> 3)] |=
                static_cast<unsigned char>(1U << (kind & 7));
        }
        XIEventMask mask{device, static_cast<int>(bits.size()), bits.data()};
        XISelectEvents(display_.get(), window, &mask, 1);
    }

    void obey(const std::string& command) {
        if (!command.starts_with("sync ")) return;
        XSync(display_.get(), False);
        printPending();
        std::cout << "synced " << command.substr(5) << std::endl;
    }

    void printPending() {
        while (XPending(display_.get()) > 0) {
            XEvent event;
            XNextEvent(display_.get(), &event);
            if (event.type == MappingNotify) {
                XRefreshKeyboardMapping(&event.xmapping);
            } else if (event.xcookie.type == GenericEvent &&
                       event.xcookie.extension == xinputOpcode_ &&
                       XGetEventData(display_.get(), &event.xcookie) != 0) {
                printExtended(event.xcookie);
                XFreeEventData(display_.get(), &event.xcookie);
            } else {
                printCore(event);
            }
        }
    }

    void printCore(XEvent& event) {
        static const std::map<int, Kind> kinds{
            {KeyPress, Kind::keyPress},       {KeyRelease, Kind::keyRelease},
            {ButtonPress, Kind::buttonPress}, {ButtonRelease, Kind::buttonRelease},
            {MotionNotify, Kind::motion},     {FocusIn, Kind::focusIn},
            {FocusOut, Kind::focusOut}};
        const auto kind = kinds.find(event.type);
        if (kind == kinds.end()) {
            return;
        }
        ProbeEvent seen;
        seen.kind = kind->second;
        if (event.type == FocusIn || event.type == FocusOut) {
            seen.detail = event.xfocus.mode;
        } else {
            // Key, button and motion events begin alike; a motion has no detail of its own.
            seen.detail = event.type == MotionNotify ? 0 : static_cast<int>(event.xkey.keycode);
            seen.modifiers = event.xkey.state & 0xff;
            seen.group = static_cast<int>(event.xkey.state >> 13 & 3);
            seen.x = event.xkey.x_root;
            seen.y = event.xkey.y_root;
            seen.serverMs = event.xkey.time;
        }
        if (event.type == KeyPress || event.type == KeyRelease) {
            nameKey(seen);
        }
        print(seen);
    }

    void printExtended(const XGenericEventCookie& cookie) {
        static const std::map<int, Kind> kinds{
            {XI_KeyPress, Kind::keyPress},       {XI_KeyRelease, Kind::keyRelease},
            {XI_ButtonPress, Kind::buttonPress}, {XI_ButtonRelease, Kind::buttonRelease},
            {XI_Motion, Kind::motion},           {XI_FocusIn, Kind::focusIn},
            {XI_FocusOut, Kind::focusOut}};
        if (cookie.evtype == XI_HierarchyChanged || cookie.evtype == XI_Enter) {
            scrollAxes_->readPositions();
            return;
        }
        const auto kind = kinds.find(cookie.evtype);
        if (kind == kinds.end()) {
            return;
        }
        ProbeEvent seen;
        if (cookie.evtype == XI_FocusIn || cookie.evtype == XI_FocusOut) {
            const auto& focus = *static_cast<const XIEnterEvent*>(cookie.data);
            seen.device = focus.deviceid;
            seen.source = focus.sourceid;
            seen.detail = focus.mode;
        } else {
            seen = fromDevice(*static_cast<const XIDeviceEvent*>(cookie.data), cookie.evtype);
            if (mode_ == Mode::smooth && seen.emulated) {
                return;
            }
        }
        seen.kind = kind->second;
        if (cookie.evtype == XI_Motion && mode_ == Mode::smooth) {
            printScroll(seen, *static_cast<const XIDeviceEvent*>(cookie.data));
            return;
        }
        print(seen);
    }

    ProbeEvent fromDevice(const XIDeviceEvent& event, int type) {
        ProbeEvent seen;
        seen.device = event.deviceid;
        seen.source = event.sourceid;
        seen.detail = event.detail;
        seen.modifiers = static_cast<unsigned>(event.mods.effective);
        seen.group = event.group.effective;
        seen.x = static_cast<int>(event.root_x);
        seen.y = static_cast<int>(event.root_y);
        seen.serverMs = event.time;
        if (type == XI_KeyPress || type == XI_KeyRelease) {
            seen.repeat = (event.flags & XIKeyRepeat) != 0;
            nameKey(seen);
        } else {
            seen.emulated = (event.flags & XIPointerEmulated) != 0;
        }
        return seen;
    }

    void printScroll(ProbeEvent& seen, const XIDeviceEvent& event) {
        if (const auto scroll = scrollAxes_->distanceOf(event)) {
            seen.kind = Kind::scroll;
            seen.down = scroll->down;
            seen.right = scroll->right;
        }
        print(seen);
    }

    void nameKey(ProbeEvent& seen) {
        const auto state = static_cast<unsigned>(XkbBuildCoreState(seen.modifiers, seen.group));
        KeySym keysym = NoSymbol;
        unsigned consumed = 0;
        XkbLookupKeySym(display_.get(), static_cast<KeyCode>(seen.detail), state, &consumed,
                        &keysym);
        const char* name = XKeysymToString(keysym);
        seen.keysym = name != nullptr ? name : "";
        std::array<char, 16> text{};
        int extra = 0;
        XkbTranslateKeySym(display_.get(), &keysym, state & ~consumed, text.data(),
                           static_cast<int>(text.size()) - 1, &extra);
        seen.text = text.data();
    }

    static void print(ProbeEvent& event) {
        event.receivedUs = nowUs();
        std::cout << toLine(event) << '\n';
    }

    Mode mode_;
    std::unique_ptr<Display, decltype(&XCloseDisplay)> display_;
    std::unique_ptr<ScrollAxes> scrollAxes_;
    int xinputOpcode_ = -1;
    Window window_ = None;
    LineInput input_;
};

}  // namespace
}  // namespace orvel::rig

int main(int argc, char** argv) {
    using orvel::rig::Mode;
    static const std::map<std::string, Mode> modes{
        {"core", Mode::core}, {"xinput", Mode::xinput}, {"smooth", Mode::smooth}};
    if (argc != 4 || !modes.contains(argv[3])) {
        std::cerr << "usage: " << argv[0] << " TITLE WIDTHxHEIGHT+X+Y core|xinput|smooth\n";
        return 2;
    }
    std::ios::sync_with_stdio(false);
    orvel::rig::KeyProbeClient({argv[1], argv[2], modes.at(argv[3])}).run();
    return 0;
}
