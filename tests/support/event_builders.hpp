#pragma once

#include "platform/event.hpp"

namespace orvel::test {

inline Event keyDown(KeyCode keyCode, EventFlags flags = 0) {
    return {.type = EventType::keyDown, .keyCode = keyCode, .flags = flags};
}

inline Event keyUp(KeyCode keyCode, EventFlags flags = 0) {
    return {.type = EventType::keyUp, .keyCode = keyCode, .flags = flags};
}

/// The key-down that a held key sends again and again.
inline Event keyRepeat(KeyCode keyCode, EventFlags flags = 0) {
    return {.type = EventType::keyDown, .keyCode = keyCode, .flags = flags, .isAutorepeat = true};
}

/// A modifier key went down or up; `flags` are the flags after that.
inline Event flagsChanged(KeyCode keyCode, EventFlags flags) {
    return {.type = EventType::flagsChanged, .keyCode = keyCode, .flags = flags};
}

/// One notch of a wheel.
inline Event wheel(std::int64_t lines, std::int64_t pixels) {
    return {.type = EventType::scrollWheel, .deltaAxis1 = lines, .pointDeltaAxis1 = pixels};
}

/// A movement on a touchpad.
inline Event touchpadScroll(std::int64_t lines, std::int64_t pixels) {
    Event event = wheel(lines, pixels);
    event.hasPreciseScrollingDeltas = true;
    return event;
}

inline Event buttonDown(std::int64_t button, EventFlags flags = 0) {
    return {.type = EventType::otherMouseDown, .flags = flags, .buttonNumber = button};
}

inline Event buttonUp(std::int64_t button, EventFlags flags = 0) {
    return {.type = EventType::otherMouseUp, .flags = flags, .buttonNumber = button};
}

/// The same event as this system would post it.
inline Event marked(Event event) {
    event.userData = kSyntheticMarker;
    return event;
}

}  // namespace orvel::test
