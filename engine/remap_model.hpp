#pragma once

#include "platform/event.hpp"

#include <array>
#include <optional>
#include <string_view>

namespace orvel {

/// What a physical modifier key acts as.
enum class ModifierTarget { ctrl, win, alt, cmd, itself };

enum class DeleteStrategy { combo, sacrifice };

/// The modifier that makes Backspace a forward delete.
enum class ComboModifier { shift, fn, ctrl, option, cmd };

/// The key that is given up to be the forward delete.
enum class SingleSacrificeKey { f12, f11, f10, grave, fn };

/// A value, the text that is stored and shown for it.
template <typename T>
struct Labelled {
    T value;
    std::string_view label;
};

inline constexpr std::array kModifierTargets{
    Labelled{ModifierTarget::ctrl, "Ctrl"}, Labelled{ModifierTarget::win, "Win"},
    Labelled{ModifierTarget::alt, "Alt"}, Labelled{ModifierTarget::cmd, "Cmd"},
    Labelled{ModifierTarget::itself, "原按键"}};

inline constexpr std::array kDeleteStrategies{Labelled{DeleteStrategy::combo, "组合键"},
                                              Labelled{DeleteStrategy::sacrifice, "牺牲单键"}};

/// How the combo strategy recognises its modifier on the press of Backspace.
struct ComboModifierRow {
    ComboModifier value;
    std::string_view label;
    EventFlags required;
    EventFlags absent;
};

inline constexpr std::array kComboModifiers{
    ComboModifierRow{ComboModifier::shift, "Shift", flag::shift,
                     flag::command | flag::control | flag::option},
    ComboModifierRow{ComboModifier::fn, "Fn", flag::secondaryFn, flag::none},
    ComboModifierRow{ComboModifier::ctrl, "Ctrl", flag::control,
                     flag::command | flag::option | flag::shift},
    ComboModifierRow{ComboModifier::option, "Option", flag::option,
                     flag::command | flag::control | flag::shift},
    ComboModifierRow{ComboModifier::cmd, "Cmd", flag::command,
                     flag::option | flag::control | flag::shift}};

struct SacrificeKeyRow {
    SingleSacrificeKey value;
    std::string_view label;
    KeyCode keyCode;
};

inline constexpr std::array kSacrificeKeys{
    SacrificeKeyRow{SingleSacrificeKey::f12, "F12", key::f12},
    SacrificeKeyRow{SingleSacrificeKey::f11, "F11", key::f11},
    SacrificeKeyRow{SingleSacrificeKey::f10, "F10", key::f10},
    SacrificeKeyRow{SingleSacrificeKey::grave, "` (波浪号)", key::grave},
    SacrificeKeyRow{SingleSacrificeKey::fn, "Fn", key::fn}};

/// The row with that label in one of the tables above, null when there is none.
template <typename Table>
constexpr auto findLabel(const Table& table, std::string_view label) -> decltype(table.data()) {
    for (const auto& row : table) {
        if (row.label == label) return &row;
    }
    return nullptr;
}

}  // namespace orvel
