#pragma once

#include "app/replay/json_field.hpp"
#include "platform/memory/memory_desktop.hpp"

namespace orvel::replay {

/// Changes the desktop as the value of a `world` step says, or reports what is wrong with it and
/// changes nothing.
void applyWorld(const JsonField& field, memory::MemoryDesktop& desktop);

/// Writes preferences from outside as the value of a `pref` step says, or reports what is wrong
/// with it and writes nothing.
void applyPreferences(const JsonField& field, memory::MemoryDesktop& desktop);

}  // namespace orvel::replay
