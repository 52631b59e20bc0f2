#include "platform/x11/keyboard_grabs.hpp"

#include "platform/x11/device_grab.hpp"
#include "platform/x11/input_devices.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

#include <utility>

namespace orvel::x11 {

namespace {

constexpr unsigned kAllModifiers = 0xFF;

}  // namespace

bool KeyboardGrabs::take(int device) {
    EventSet keys(device, {XI_KeyPress, XI_KeyRelease});
    const GrabResult result = grabDevice(hub_.session(), device, keys);
    if (result == GrabResult::refused) return false;
    if (result == GrabResult::gone) return true;
    devices_.insert(device);
    for (const unsigned char key : heldKeys(hub_.session(), device)) {
        hub_.path().adopt({device, key});
    }
    apply(device, sessionLocks());
    return true;
}

void KeyboardGrabs::drop(int device) {
    if (devices_.erase(device) != 0) hub_.path().releaseDevice(device);
}

void KeyboardGrabs::giveAllBack() {
    const std::set<int> devices = std::exchange(devices_, {});
    for (const int device : devices) {
        hub_.path().releaseDevice(device);
        ungrabDevice(hub_.session(), device);
    }
    hub_.ledger().releaseAll();
    if (!devices.empty() && hub_.session().isAlive()) settleCapsLock();
}

void KeyboardGrabs::synchronise() {
    if (!hub_.session().isAlive()) return;
    const Locks locks = sessionLocks();
    hub_.state().setCapsLock((locks.modifiers & LockMask) != 0);
    for (const int device : devices_) apply(device, locks);
}

void KeyboardGrabs::settleCapsLock() {
    XkbLockModifiers(hub_.session().display(), XkbUseCoreKbd, LockMask,
                     hub_.state().capsLock() ? LockMask : 0U);
    synchronise();
}

KeyboardGrabs::Locks KeyboardGrabs::sessionLocks() const {
    XkbStateRec state{};
    XkbGetState(hub_.session().display(), XkbUseCoreKbd, &state);
    return {state.locked_mods, static_cast<unsigned>(state.locked_group)};
}

void KeyboardGrabs::apply(int device, Locks locks) {
    Display* display = hub_.session().display();
    const ErrorTrap trap(hub_.session());
    const auto id = static_cast<unsigned>(device);
    XkbLockModifiers(display, id, kAllModifiers, locks.modifiers);
    XkbLockGroup(display, id, locks.group);
}

}  // namespace orvel::x11
