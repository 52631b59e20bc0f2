#include "platform/x11/x11_session.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace orvel::x11 {

namespace {

/// The requests from `firstSerial` on of one connection, watched for errors.
struct TrapRecord {
    const ErrorTrap* trap;
    Display* display;
    unsigned long firstSerial;
    int error = 0;
};

// Xlib's error handler is given no context of ours.
std::mutex trapsMutex;          // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
std::vector<TrapRecord> traps;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

int noteError(Display* display, XErrorEvent* event) {
    const std::lock_guard lock(trapsMutex);
    for (auto record = traps.rbegin(); record != traps.rend(); ++record) {
        if (record->display != display || event->serial < record->firstSerial) continue;
        if (record->error == 0) record->error = event->error_code;
        break;
    }
    return 0;
}

/// Xlib calls this before the handler of the one connection; its default prints and exits.
int ignoreLostConnection(Display* /*display*/) { return 0; }

/// For each connection anew: Qt puts handlers of its own in place when it starts.
void installErrorHandlers() {
    XSetErrorHandler(noteError);
    XSetIOErrorHandler(ignoreLostConnection);
}

}  // namespace

Result<std::unique_ptr<X11Session>> X11Session::open(const std::string& displayName) {
    installErrorHandlers();
    Display* display = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
    if (display == nullptr) {
        const std::string name = XDisplayName(displayName.empty() ? nullptr : displayName.c_str());
        return Failure{name.empty() ? "no X display: DISPLAY is not set"
                                    : "cannot open the X display '" + name + "'"};
    }
    std::unique_ptr<X11Session> session(new X11Session(display));
    if (const auto ready = session->initialise(); !ready) return Failure{ready.error()};
    return session;
}

X11Session::X11Session(_XDisplay* display) : display_(display), root_(DefaultRootWindow(display)) {}

X11Session::~X11Session() {
    // Closing a dead connection would report the loss once more.
    if (alive_) XCloseDisplay(display_);
}

Result<> X11Session::initialise() {
    XSetIOErrorExitHandler(display_, connectionLost, this);
    int event = 0;
    int error = 0;
    if (XQueryExtension(display_, "XInputExtension", &inputOpcode_, &event, &error) == 0) {
        return Failure{"the X server lacks the extension XInputExtension"};
    }
    int major = 2;
    int minor = 2;
    if (XIQueryVersion(display_, &major, &minor) != Success) {
        return Failure{"the X server's XInputExtension is older than version 2.2"};
    }
    int opcode = 0;
    int xkbMajor = XkbMajorVersion;
    int xkbMinor = XkbMinorVersion;
    if (XkbQueryExtension(display_, &opcode, &keyboardEventType_, &error, &xkbMajor, &xkbMinor) ==
        0) {
        return Failure{"the X server lacks the extension XKEYBOARD"};
    }
    if (XTestQueryExtension(display_, &event, &error, &major, &minor) == 0) {
        return Failure{"the X server lacks the extension XTEST"};
    }
    return {};
}

void X11Session::connectionLost(_XDisplay* /*display*/, void* session) {
    auto& self = *static_cast<X11Session*>(session);
    if (!self.alive_) return;
    self.alive_ = false;
    if (self.lost_) self.lost_();
}

int X11Session::fileDescriptor() const { return ConnectionNumber(display_); }

unsigned long X11Session::atom(std::string_view name) {
    const auto known = atoms_.find(name);
    if (known != atoms_.end()) return known->second;
    const std::string text(name);
    return atoms_[text] = XInternAtom(display_, text.c_str(), False);
}

ErrorTrap::ErrorTrap(X11Session& session) : session_(session) {
    const std::lock_guard lock(trapsMutex);
    traps.push_back({this, session.display(), NextRequest(session.display())});
}

ErrorTrap::~ErrorTrap() {
    // Late errors of the trapped requests are dropped like any other.
    const std::lock_guard lock(trapsMutex);
    std::erase_if(traps, [this](const TrapRecord& record) { return record.trap == this; });
}

int ErrorTrap::firstError() {
    XSync(session_.display(), False);
    const std::lock_guard lock(trapsMutex);
    const auto own = std::find_if(traps.begin(), traps.end(),
                                  [this](const TrapRecord& record) { return record.trap == this; });
    return own->error;
}

}  // namespace orvel::x11
