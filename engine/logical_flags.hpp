#pragma once

#include "app/preferences.hpp"
#include "engine/remap_model.hpp"
#include "platform/event.hpp"

namespace orvel {

/// What the physical Control, Option and Command keys act as for the engine, read now. An absent
/// setting is Cmd, Win and Alt in this order; a text that is no target leaves the key itself.
ModifierTarget controlTarget(const Preferences& preferences);
ModifierTarget optionTarget(const Preferences& preferences);
ModifierTarget commandTarget(const Preferences& preferences);

/// Translates physical modifier flags to the ones that the person means, as mapped now. Flags
/// other than Control, Option and Command stay.
EventFlags translatedFlags(EventFlags physical, const Preferences& preferences);

/// Translates the code of a modifier key; every other code stays.
KeyCode translatedModifierKey(KeyCode physical, const Preferences& preferences);

}  // namespace orvel
