#pragma once

#include <string>

struct xkb_keymap;

namespace orvel::x11 {

/// Whether every letter from a to z can be typed without modifiers in that group of the keymap.
[[nodiscard]] bool typesAscii(xkb_keymap* keymap, unsigned group);

/// The same for a layout of the system's files, such as "de" with the variant "nodeadkeys"; false
/// for one that does not exist. Takes some milliseconds.
[[nodiscard]] bool layoutTypesAscii(const std::string& layout, const std::string& variant);

}  // namespace orvel::x11
