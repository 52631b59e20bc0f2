#pragma once

#include "platform/event_poster.hpp"

#include <cstdint>
#include <optional>

namespace orvel {

/// Type number of a media key in a system-defined event.
using MediaKeyType = std::int32_t;

/// The media key that a key of the F-row carries, absent for every other key.
std::optional<MediaKeyType> mediaKeyOf(KeyCode keyCode);

/// Posts media keys that carry the marker. Any thread.
class MediaKeyPoster {
public:
    explicit MediaKeyPoster(EventPoster& poster) : poster_(poster) {}

    void postMediaKey(MediaKeyType keyType);

private:
    EventPoster& poster_;
};

}  // namespace orvel
