#pragma once

#include "platform/event.hpp"

#include <optional>
#include <string_view>

namespace orvel::memory {

/// The name of an event type in transcripts.
std::string_view eventTypeName(EventType type);
/// The event type of that name, absent when there is none.
std::optional<EventType> eventTypeNamed(std::string_view name);

}  // namespace orvel::memory
