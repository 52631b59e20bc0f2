#include "platform/x11/pointer_grabs.hpp"

#include "platform/x11/device_grab.hpp"

#include <X11/Xlib.h>

#include <array>
#include <cmath>
#include <utility>

namespace orvel::x11 {

namespace {

/// The middle button, and everything beyond the wheel.
constexpr std::array kButtons{button::middle, button::back, button::forward, 10, 11, 12};

/// Whole pixels of `value`, which keeps the rest.
int takeWholePart(double& value) {
    const double whole = std::trunc(value);
    value -= whole;
    return static_cast<int>(whole);
}

}  // namespace

bool PointerGrabs::takeButtons(const MasterDevices& masters) {
    masters_ = masters;
    hasButtons_ = true;
    Display* display = hub_.session().display();
    for (const XButton number : kButtons) {
        EventSet events(masters.pointer, {XI_ButtonPress, XI_ButtonRelease});
        XIGrabModifiers modifiers{static_cast<int>(XIAnyModifier), 0};
        if (XIGrabButton(display, masters.pointer, number, hub_.session().root(), None,
                         XIGrabModeSync, XIGrabModeAsync, False, events.mask(), 1,
                         &modifiers) != 0) {
            giveButtonsBack();
            return false;
        }
    }
    return true;
}

void PointerGrabs::giveButtonsBack() {
    if (!std::exchange(hasButtons_, false) || !hub_.session().isAlive()) return;
    const ErrorTrap trap(hub_.session());
    for (const XButton number : kButtons) {
        XIGrabModifiers modifiers{static_cast<int>(XIAnyModifier), 0};
        XIUngrabButton(hub_.session().display(), masters_.pointer, number, hub_.session().root(), 1,
                       &modifiers);
    }
    // A press that is held back at this moment must not freeze the pointer.
    ungrabDevice(hub_.session(), masters_.pointer);
    hub_.buttons().releaseDevice(0);
}

void PointerGrabs::handleHeldBack(bool isPress, int number, int source, unsigned long time) {
    if (!isPress) return hub_.buttons().endHeld(number);
    // What we put out ourselves has been decided already.
    const bool isOurs = source == masters_.syntheticPointer;
    const bool letsGo = isOurs || hub_.buttons().letsGo(number);
    XIAllowEvents(hub_.session().display(), masters_.pointer,
                  letsGo ? XIReplayDevice : XIAsyncDevice, time);
}

void PointerGrabs::takeWhole(int device) {
    if (holdsWhole(device)) return;
    EventSet events(device, {XI_ButtonPress, XI_ButtonRelease, XI_Motion, XI_RawMotion});
    if (grabDevice(hub_.session(), device, events) != GrabResult::taken) return;
    whole_[device] = {};
    for (const int number : heldButtons(hub_.session(), device)) {
        hub_.buttons().adopt(device, number);
    }
}

void PointerGrabs::dropWhole(int device) {
    if (whole_.erase(device) != 0) hub_.buttons().releaseDevice(device);
}

void PointerGrabs::ungrabWhole() {
    for (const auto& [device, remainder] : whole_) ungrabDevice(hub_.session(), device);
    if (hub_.session().isAlive()) XSync(hub_.session().display(), False);
}

void PointerGrabs::giveWholeBack() {
    for (const auto& [device, remainder] : std::exchange(whole_, {})) {
        hub_.buttons().releaseDevice(device);
        ungrabDevice(hub_.session(), device);
    }
}

void PointerGrabs::handleButton(int device, bool isPress, int number) {
    isPress ? hub_.buttons().press(device, number) : hub_.buttons().release(device, number);
}

void PointerGrabs::handleMotion(int device, double dx, double dy) {
    Remainder& remainder = whole_[device];
    remainder.x += dx;
    remainder.y += dy;
    const int x = takeWholePart(remainder.x);
    const int y = takeWholePart(remainder.y);
    if (x != 0 || y != 0) hub_.sendMotion(x, y);
}

}  // namespace orvel::x11
