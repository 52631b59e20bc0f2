#pragma once

#include "app/replay/json_field.hpp"
#include "platform/event.hpp"

#include <optional>
#include <string_view>

namespace orvel::replay {

/// The value of an `event` step.
void read(const JsonField& field, Event& into);

}  // namespace orvel::replay
