// The events of the tap's connection, one handler for each kind.
#include "platform/x11/x11_event_tap.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <utility>

namespace orvel::x11 {

namespace {

const XIDeviceEvent& deviceEvent(const void* data) {
    return *static_cast<const XIDeviceEvent*>(data);
}
const XIRawEvent& rawEvent(const void* data) { return *static_cast<const XIRawEvent*>(data); }

}  // namespace

void X11EventTap::processEvents() {
    Display* display = hub_.session().display();
    while (hasEvent()) {
        // What the desktop told before the server sent this event has arrived by now. The event is
        // taken only then, since bringing things up to date may handle events as well.
        if (beforeEvent_) beforeEvent_();
        if (!hasEvent()) return;
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == hub_.session().keyboardEventType()) handleKeyboardChange(&event);
        if (event.type != GenericEvent || event.xcookie.extension != hub_.session().inputOpcode() ||
            XGetEventData(display, &event.xcookie) == False) {
            continue;
        }
        handleInput(event.xcookie.evtype, event.xcookie.data);
        XFreeEventData(display, &event.xcookie);
        hub_.flush();
    }
}

bool X11EventTap::hasEvent() const {
    return hub_.session().isAlive() && XPending(hub_.session().display()) > 0;
}

void X11EventTap::handleInput(int type, void* data) {
    switch (type) {
        case XI_KeyPress:
        case XI_KeyRelease: return handleKey(type, data);
        case XI_ButtonPress:
        case XI_ButtonRelease: return handleButton(type, data);
        case XI_RawMotion: return handleRawMotion(data);
        case XI_RawKeyPress:
        case XI_RawKeyRelease: return handleRawKey(type, data);
        case XI_HierarchyChanged: return handleHierarchy(data);
        default: return;
    }
}

void X11EventTap::handleKey(int type, const void* data) {
    const XIDeviceEvent& event = deviceEvent(data);
    if (!keyboards_.holds(event.deviceid)) return;
    if (std::exchange(isMapStale_, false)) hub_.reloadKeyMap();
    const DeviceKey key{event.deviceid, static_cast<XKeycode>(event.detail)};
    const KeyCode code = hub_.map().keyCodeOf(key.keycode);
    const bool isDown = type == XI_KeyPress;
    if (isDown) hub_.state().press(key, code);
    if (chord_.isStruckBy(hub_.state())) return strikePanicChord();
    hub_.path().handle({.key = key, .down = isDown, .isRepeat = (event.flags & XIKeyRepeat) != 0});
    // The synthetic key turns the lock of the session over, at its press or at its release; what
    // the server tells of that shall not be taken for the user's wish.
    if (code == key::capsLock) keyboards_.settleCapsLock();
}

void X11EventTap::handleButton(int type, const void* data) {
    const XIDeviceEvent& event = deviceEvent(data);
    const bool isPress = type == XI_ButtonPress;
    if (pointers_.holdsWhole(event.deviceid)) {
        return pointers_.handleButton(event.deviceid, isPress, event.detail);
    }
    if (event.deviceid == masters_.pointer) {
        pointers_.handleHeldBack(isPress, event.detail, event.sourceid, event.time);
    }
}

void X11EventTap::handleRawMotion(const void* data) {
    const XIRawEvent& event = rawEvent(data);
    if (!pointers_.holdsWhole(event.deviceid)) return;
    double moved[2] = {0, 0};
    const double* value = event.valuators.values;
    for (int axis = 0; axis < event.valuators.mask_len * 8; ++axis) {
        if (!XIMaskIsSet(event.valuators.mask, axis)) continue;
        if (axis < 2) moved[axis] = *value;
        ++value;
    }
    pointers_.handleMotion(event.deviceid, moved[0], moved[1]);
}

void X11EventTap::handleRawKey(int type, const void* data) {
    const XIRawEvent& event = rawEvent(data);
    if (!isGivenBack_ || event.sourceid == masters_.syntheticKeyboard) return;
    const DeviceKey key{event.sourceid, static_cast<XKeycode>(event.detail)};
    if (type == XI_RawKeyPress) {
        hub_.state().press(key, hub_.map().keyCodeOf(key.keycode));
    } else {
        hub_.state().release(key);
    }
    if (chord_.isStruckBy(hub_.state())) strikePanicChord();
}

void X11EventTap::handleHierarchy(const void* data) {
    const auto& change = *static_cast<const XIHierarchyEvent*>(data);
    for (int i = 0; i < change.num_info; ++i) {
        const XIHierarchyInfo& info = change.info[i];
        if ((info.flags & (XIDeviceDisabled | XISlaveRemoved)) != 0) {
            keyboards_.drop(info.deviceid);
            pointers_.dropWhole(info.deviceid);
        }
        const bool isNew = (info.flags & (XIDeviceEnabled | XISlaveAttached)) != 0;
        if (!isNew || isGivenBack_ || keyboards_.holds(info.deviceid)) continue;
        const auto device = readDevice(hub_.session(), info.deviceid);
        if (!device || !device->isEnabled) continue;
        if (device->hasKeys) static_cast<void>(keyboards_.take(device->id));
        takeIfWanted(*device);
    }
}

void X11EventTap::handleKeyboardChange(const void* event) {
    const auto& change = *static_cast<const XkbEvent*>(event);
    if (change.any.xkb_type == XkbStateNotify) return keyboards_.synchronise();
    // One change of the layout is told many times; the next key asks for the result.
    isMapStale_ = true;
}

}  // namespace orvel::x11
