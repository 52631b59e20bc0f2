#include "platform/x11/x11_event_tap.hpp"

#include "platform/x11/event_set.hpp"
#include "platform/x11/wheel_kind.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <utility>

namespace orvel::x11 {

X11EventTap::X11EventTap(InputHub& hub) : hub_(hub), keyboards_(hub), pointers_(hub) {}

X11EventTap::~X11EventTap() { stop(); }

bool X11EventTap::create(const EventTapRequest& request, EventHandler handler) {
    if (exists_ || !claimTap()) return false;
    exists_ = true;
    masters_ = findMasters(hub_.session());
    mask_ = request.mask;
    handler_ = std::move(handler);
    selectChanges();
    if (!takeDevices()) stop();
    return exists_;
}

void X11EventTap::enable() {
    if (!exists_) return;
    hub_.setHandler([this](Event& event) {
        return (mask_ & maskOf(event.type)) == 0 ? EventVerdict::pass : handler_(event);
    });
    isEnabled_ = true;
    if (!holdsDevices()) {
        giveDevicesBack();
        static_cast<void>(takeDevices());
    }
    hub_.wakeIfPending();
}

bool X11EventTap::isEnabled() const { return exists_ && isEnabled_ && holdsDevices(); }

/// The server shows a device that somebody has taken as floating.
bool X11EventTap::holdsDevices() const {
    if (isGivenBack_ || !hub_.session().isAlive()) return true;
    const auto devices = listDevices(hub_.session(), masters_);
    hub_.wakeIfPending();
    return std::none_of(devices.begin(), devices.end(), [this](const InputDevice& device) {
        return keyboards_.holds(device.id) && !device.isFloating;
    });
}

void X11EventTap::stop() {
    if (!std::exchange(exists_, false)) return;
    isEnabled_ = false;
    giveDevicesBack();
    hub_.setHandler({});
    releaseClaim();
    hub_.flush();
}

bool X11EventTap::claimTap() {
    Display* display = hub_.session().display();
    const Atom selection = hub_.session().atom(kTapSelection);
    if (XGetSelectionOwner(display, selection) != None) return false;
    claimWindow_ = XCreateSimpleWindow(display, hub_.session().root(), -1, -1, 1, 1, 0, 0, 0);
    XSetSelectionOwner(display, selection, claimWindow_, CurrentTime);
    if (XGetSelectionOwner(display, selection) == claimWindow_) return true;
    releaseClaim();
    return false;
}

void X11EventTap::releaseClaim() {
    if (hub_.session().isAlive()) XDestroyWindow(hub_.session().display(), claimWindow_);
    claimWindow_ = 0;
}

bool X11EventTap::takeDevices() {
    if (!pointers_.takeButtons(masters_)) return false;
    for (const InputDevice& device : listDevices(hub_.session(), masters_)) {
        if (!device.isEnabled || device.isFloating) continue;
        if (device.hasKeys && !keyboards_.take(device.id)) return false;
        takeIfWanted(device);
    }
    keyboards_.synchronise();
    return true;
}

void X11EventTap::giveDevicesBack() {
    keyboards_.giveAllBack();
    pointers_.giveWholeBack();
    pointers_.giveButtonsBack();
    hub_.flush();
}

void X11EventTap::takeIfWanted(const InputDevice& device) {
    if (grabsWheels_ && wheelKindOf(device) == WheelKind::notched) pointers_.takeWhole(device.id);
}

void X11EventTap::setWheelGrab(bool on) {
    if (std::exchange(grabsWheels_, on) == on || !exists_ || isGivenBack_) return;
    if (!on) {
        pointers_.ungrabWhole();
        processEvents();
        pointers_.giveWholeBack();
    } else {
        for (const InputDevice& device : listDevices(hub_.session(), masters_)) {
            if (device.isEnabled && !device.isFloating) takeIfWanted(device);
        }
    }
    hub_.flush();
    hub_.wakeIfPending();
}

void X11EventTap::selectChanges() {
    Display* display = hub_.session().display();
    EventSet hierarchy(XIAllDevices, {XI_HierarchyChanged});
    XISelectEvents(display, hub_.session().root(), hierarchy.mask(), 1);
    constexpr unsigned changes = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
    XkbSelectEvents(display, XkbUseCoreKbd, changes, changes);
    XkbSelectEventDetails(display, XkbUseCoreKbd, XkbStateNotify, XkbAllStateComponentsMask,
                          XkbModifierLockMask | XkbGroupLockMask);
}

/// Raw events tell of keys also while no device is taken. From the return on the server tells them.
void X11EventTap::watchRawKeys(bool on) {
    Display* display = hub_.session().display();
    EventSet raw(XIAllDevices, on ? std::initializer_list<int>{XI_HierarchyChanged, XI_RawKeyPress,
                                                               XI_RawKeyRelease}
                                  : std::initializer_list<int>{XI_HierarchyChanged});
    XISelectEvents(display, hub_.session().root(), raw.mask(), 1);
    if (hub_.session().isAlive()) XSync(display, False);
}

void X11EventTap::strikePanicChord() {
    if (isGivenBack_) {
        takeBack();
    } else {
        isGivenBack_ = true;
        giveDevicesBack();
        watchRawKeys(true);
    }
    if (panicTold_) panicTold_(isGivenBack_);
}

void X11EventTap::takeBack() {
    if (!std::exchange(isGivenBack_, false) || !exists_) return;
    watchRawKeys(false);
    static_cast<void>(takeDevices());
    hub_.flush();
    hub_.wakeIfPending();
}

}  // namespace orvel::x11
