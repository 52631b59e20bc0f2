#pragma once

#include "platform/event.hpp"

#include <cstdint>
#include <optional>
#include <span>

namespace orvel {

/// Which state table a posted event is based on.
enum class EventSourceState : std::uint8_t { combinedSession = 0, hidSystem = 1 };

/// A key or flags-changed event to post.
struct PostedKey {
    EventType type = EventType::keyDown;
    KeyCode keyCode = 0;
    /// Absent: the flags that the source gives a new event.
    std::optional<EventFlags> flags;
    std::int64_t userData = kSyntheticMarker;
};

/// A media key event to post, a system-defined event of subtype 8.
struct PostedMediaKey {
    EventFlags flags = 0;
    int subtype = 8;
    std::int64_t data1 = 0;
    std::int64_t data2 = -1;
    std::int64_t userData = kSyntheticMarker;
};

/// Posts synthetic input where hardware input enters the system. Any thread.
class EventPoster {
public:
    virtual ~EventPoster() = default;

    /// Creates all events first and posts them in order; posts nothing and returns false when
    /// one cannot be created.
    virtual bool postKeys(EventSourceState source, std::span<const PostedKey> keys) = 0;
    virtual bool postMediaKeys(std::span<const PostedMediaKey> keys) = 0;
};

}  // namespace orvel
