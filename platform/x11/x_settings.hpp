#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <variant>

namespace orvel::x11 {

/// What a settings daemon tells all toolkits, by name: numbers and texts. Colours are left out.
using XSettings = std::map<std::string, std::variant<std::int32_t, std::string>>;

/// Reads the content of the `_XSETTINGS_SETTINGS` property. What follows a damaged entry is left
/// out.
[[nodiscard]] XSettings parseXSettings(std::span<const std::uint8_t> property);

}  // namespace orvel::x11
