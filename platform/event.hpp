#pragma once

#include "platform/base/event_flags.hpp"
#include "platform/base/key_codes.hpp"

#include <cstdint>

namespace orvel {

/// Kinds of input event that the tap sees, in the numbers of macOS.
enum class EventType : std::uint8_t {
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,
    systemDefined = 14,
    scrollWheel = 22,
    otherMouseDown = 25,
    otherMouseUp = 26,
};

/// Set of event types: bit n stands for the type with number n.
using EventMask = std::uint64_t;

constexpr EventMask maskOf(EventType type) { return EventMask{1} << static_cast<unsigned>(type); }

/// The value in an event's user data that marks it as posted by this system.
inline constexpr std::int64_t kSyntheticMarker = 42;

/// One input event, free of any desktop's own types.
struct Event {
    EventType type = EventType::keyDown;
    KeyCode keyCode = 0;
    EventFlags flags = 0;
    std::int64_t buttonNumber = 0;     ///< only for the two mouse types; 2 is the middle button
    std::int64_t deltaAxis1 = 0;       ///< vertical wheel movement in lines
    std::int64_t pointDeltaAxis1 = 0;  ///< vertical wheel movement in pixels
    bool hasPreciseScrollingDeltas = false;  ///< touchpads and other continuous devices
    bool isAutorepeat = false;
    std::int64_t userData = 0;

    bool operator==(const Event&) const = default;
};

}  // namespace orvel
