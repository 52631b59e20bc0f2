#include "platform/macos/mac_event_fields.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

/// An event that cannot be looked at counts as a touchpad's, so that nobody turns it around.
bool hasPreciseScrollingDeltas(CGEventRef event) {
    @autoreleasepool {
        NSEvent* seen = [NSEvent eventWithCGEvent:event];
        return seen == nil || seen.hasPreciseScrollingDeltas;
    }
}

}  // namespace

Event readEvent(CGEventType type, CGEventRef source) {
    const auto field = [source](CGEventField name) {
        return CGEventGetIntegerValueField(source, name);
    };
    Event event;
    event.type = static_cast<EventType>(type);
    event.flags = CGEventGetFlags(source);
    event.userData = field(kCGEventSourceUserData);
    switch (event.type) {
        case EventType::keyDown:
        case EventType::keyUp:
        case EventType::flagsChanged:
            event.keyCode = field(kCGKeyboardEventKeycode);
            event.isAutorepeat = field(kCGKeyboardEventAutorepeat) != 0;
            break;
        case EventType::scrollWheel:
            event.deltaAxis1 = field(kCGScrollWheelEventDeltaAxis1);
            event.pointDeltaAxis1 = field(kCGScrollWheelEventPointDeltaAxis1);
            event.hasPreciseScrollingDeltas = hasPreciseScrollingDeltas(source);
            break;
        case EventType::otherMouseDown:
        case EventType::otherMouseUp:
            event.buttonNumber = field(kCGMouseEventButtonNumber);
            break;
        case EventType::systemDefined:
            break;
    }
    return event;
}

void writeChanges(const Event& before, const Event& after, CGEventRef event) {
    const auto write = [event](CGEventField name, std::int64_t old, std::int64_t value) {
        if (value != old) CGEventSetIntegerValueField(event, name, value);
    };
    write(kCGKeyboardEventKeycode, before.keyCode, after.keyCode);
    write(kCGMouseEventButtonNumber, before.buttonNumber, after.buttonNumber);
    // The line delta goes first: setting it makes the system compute the pixel delta from it.
    write(kCGScrollWheelEventDeltaAxis1, before.deltaAxis1, after.deltaAxis1);
    write(kCGScrollWheelEventPointDeltaAxis1, before.pointDeltaAxis1, after.pointDeltaAxis1);
    write(kCGEventSourceUserData, before.userData, after.userData);
    if (after.flags != before.flags) CGEventSetFlags(event, after.flags);
}

}  // namespace orvel::macos
