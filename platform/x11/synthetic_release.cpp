#include "platform/x11/synthetic_release.hpp"

#include "platform/x11/x11_event_tap.hpp"

#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>

#include <chrono>
#include <poll.h>
#include <set>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::chrono::milliseconds kServerPatience{2000};

/// True when the server closed the window before the deadline.
bool waitForDestruction(X11Session& session, Window window) {
    Display* display = session.display();
    const auto deadline = std::chrono::steady_clock::now() + kServerPatience;
    while (session.isAlive()) {
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == DestroyNotify && event.xdestroywindow.window == window) return true;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        pollfd readable{session.fileDescriptor(), POLLIN, 0};
        ::poll(&readable, 1, static_cast<int>(left.count()));
    }
    return false;
}

}  // namespace

Result<SyntheticRelease> SyntheticRelease::open(const std::string& display) {
    auto session = X11Session::open(display);
    if (!session) return Failure{session.error()};
    return SyntheticRelease(std::move(session).value());
}

SyntheticRelease::SyntheticRelease(std::unique_ptr<X11Session> session)
    : session_(std::move(session)), masters_(findMasters(*session_)) {}

void SyntheticRelease::releaseEverything() {
    if (!session_->isAlive()) return;
    // At once, and again when nothing can come after it any more.
    releaseKeys();
    releaseButtons();
    if (!waitForTapToEnd()) return;
    releaseKeys();
    releaseButtons();
    releaseOrphans();
}

/// Keys that are down for applications although no keyboard holds them: their release reached the
/// dead process and nobody else.
void SyntheticRelease::releaseOrphans() {
    std::set<unsigned char> held;
    for (const InputDevice& device : listDevices(*session_, masters_)) {
        if (!device.hasKeys) continue;
        for (const unsigned char key : heldKeys(*session_, device.id)) held.insert(key);
    }
    char keymap[32];
    XQueryKeymap(session_->display(), keymap);
    for (unsigned key = 8; key < 256; ++key) {
        const bool isDown = (keymap[key / 8] >> (key % 8) & 1) != 0;
        if (isDown && !held.contains(static_cast<unsigned char>(key))) {
            XTestFakeKeyEvent(session_->display(), key, False, 0);
        }
    }
    XSync(session_->display(), False);
}

void SyntheticRelease::releaseKeys() {
    for (const unsigned char key : heldKeys(*session_, masters_.syntheticKeyboard)) {
        XTestFakeKeyEvent(session_->display(), key, False, 0);
    }
    XSync(session_->display(), False);
}

void SyntheticRelease::releaseButtons() {
    for (const int button : heldButtons(*session_, masters_.syntheticPointer)) {
        XTestFakeButtonEvent(session_->display(), static_cast<unsigned>(button), False, 0);
    }
    XSync(session_->display(), False);
}

/// The tap's window goes when the server has closed its connection.
bool SyntheticRelease::waitForTapToEnd() {
    Display* display = session_->display();
    const Atom selection = session_->atom(kTapSelection);
    const Window owner = XGetSelectionOwner(display, selection);
    if (owner == None) return true;
    const ErrorTrap trap(*session_);
    XSelectInput(display, owner, StructureNotifyMask);
    if (XGetSelectionOwner(display, selection) != owner) return true;
    return waitForDestruction(*session_, owner);
}

}  // namespace orvel::x11
