#include "platform/x11/x11_event_tap.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <array>
#include <initializer_list>
#include <utility>

namespace orvel::x11 {

namespace {

/// A set of input events in the form that the requests take.
class EventSet {
public:
    EventSet(int device, std::initializer_list<int> events) {
        for (const int event : events) XISetMask(bits_.data(), event);
        mask_ = {device, static_cast<int>(bits_.size()), bits_.data()};
    }
    EventSet(const EventSet&) = delete;
    EventSet& operator=(const EventSet&) = delete;
    XIEventMask* mask() { return &mask_; }

private:
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits_{};
    XIEventMask mask_{};
};

}  // namespace

X11EventTap::X11EventTap(InputHub& hub) : hub_(hub) {}

X11EventTap::~X11EventTap() { stop(); }

bool X11EventTap::create(const EventTapRequest& /*request*/, EventHandler handler) {
    if (exists_) return false;
    masters_ = findMasters(hub_.session());
    handler_ = std::move(handler);
    watchDevices();
    bool isRefused = false;
    for (const InputDevice& device : listDevices(hub_.session(), masters_)) {
        if (device.hasKeys && device.isEnabled && !device.isFloating) {
            isRefused |= !grabKeyboard(device.id);
        }
    }
    exists_ = true;
    if (isRefused) stop();
    return exists_;
}

void X11EventTap::enable() {
    if (!exists_) return;
    hub_.path().setHandler(handler_);
    isEnabled_ = true;
}

void X11EventTap::stop() {
    if (!std::exchange(exists_, false)) return;
    isEnabled_ = false;
    hub_.path().setHandler({});
    hub_.ledger().releaseAll();
    for (const int keyboard : keyboards_) {
        if (hub_.session().isAlive()) {
            XIUngrabDevice(hub_.session().display(), keyboard, CurrentTime);
        }
    }
    keyboards_.clear();
    hub_.flush();
}

void X11EventTap::watchDevices() {
    EventSet hierarchy(XIAllDevices, {XI_HierarchyChanged});
    XISelectEvents(hub_.session().display(), hub_.session().root(), hierarchy.mask(), 1);
}

bool X11EventTap::grabKeyboard(int device) {
    Display* display = hub_.session().display();
    ErrorTrap trap(hub_.session());
    EventSet keys(device, {XI_KeyPress, XI_KeyRelease});
    const int status = XIGrabDevice(display, device, hub_.session().root(), CurrentTime, None,
                                    XIGrabModeAsync, XIGrabModeAsync, False, keys.mask());
    // A device that vanished meanwhile is no refusal.
    if (trap.firstError() != 0) return true;
    if (status != XIGrabSuccess) return false;
    keyboards_.insert(device);
    for (const unsigned char key : heldKeys(hub_.session(), device)) {
        hub_.path().adopt({device, key});
    }
    return true;
}

void X11EventTap::dropDevice(int device) {
    if (keyboards_.erase(device) != 0) hub_.path().releaseDevice(device);
}

void X11EventTap::processEvents() {
    Display* display = hub_.session().display();
    while (hub_.session().isAlive() && XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type != GenericEvent || event.xcookie.extension != hub_.session().inputOpcode()) {
            continue;
        }
        if (XGetEventData(display, &event.xcookie) == False) continue;
        handleInputEvent(event.xcookie.evtype, event.xcookie.data);
        XFreeEventData(display, &event.xcookie);
        hub_.flush();
    }
}

void X11EventTap::handleInputEvent(int type, void* data) {
    if (type == XI_HierarchyChanged) return handleHierarchy(data);
    if (type != XI_KeyPress && type != XI_KeyRelease) return;
    const auto& key = *static_cast<const XIDeviceEvent*>(data);
    hub_.path().handle({.key = {key.deviceid, static_cast<XKeycode>(key.detail)},
                        .down = type == XI_KeyPress,
                        .isRepeat = (key.flags & XIKeyRepeat) != 0});
}

void X11EventTap::handleHierarchy(const void* data) {
    const auto& change = *static_cast<const XIHierarchyEvent*>(data);
    for (int i = 0; i < change.num_info; ++i) {
        const XIHierarchyInfo& info = change.info[i];
        if ((info.flags & (XIDeviceDisabled | XISlaveRemoved)) != 0) dropDevice(info.deviceid);
        if ((info.flags & (XIDeviceEnabled | XISlaveAttached)) == 0) continue;
        const auto device = readDevice(hub_.session(), info.deviceid);
        if (device && device->hasKeys && device->isEnabled && !keyboards_.contains(device->id)) {
            grabKeyboard(device->id);
        }
    }
}

}  // namespace orvel::x11
