#pragma once

#include "app/preference_keys.hpp"

#include <array>
#include <optional>
#include <string_view>

namespace orvel {

/// One key of the drawn keyboard row.
struct DrawnKey {
    std::string_view label;
    std::string_view symbol;  ///< empty: none
    /// The setting that says what the key acts as; absent for a key that cannot be remapped.
    std::optional<PreferenceKey> map;
    /// Tells the right-hand keys from the left-hand ones where the picture does not show it.
    std::string_view listLabel;
};

/// Left to right. The Delete key stands at the right end of the row and is drawn by itself.
inline constexpr std::array<DrawnKey, 7> kDrawnKeys{{
    {"fn", "globe", std::nullopt, "fn"},
    {"ctrl", "chevron.up", PreferenceKey::mapCtrl, "ctrl"},
    {"opt", "option", PreferenceKey::mapOption, "opt"},
    {"cmd", "command", PreferenceKey::mapCmd, "cmd"},
    {"space", "", std::nullopt, "space"},
    {"cmd", "command", PreferenceKey::mapRightCmd, "右cmd"},
    {"opt", "option", PreferenceKey::mapRightOption, "右opt"},
}};

}  // namespace orvel
