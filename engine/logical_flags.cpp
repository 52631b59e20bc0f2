#include "engine/logical_flags.hpp"

namespace orvel {

namespace {

ModifierTarget target(const Preferences& preferences, PreferenceKey key, ModifierTarget absent) {
    const auto stored = preferences.stringForKey(key);
    if (!stored) return absent;
    const auto* row = findLabel(kModifierTargets, *stored);
    return row == nullptr ? ModifierTarget::itself : row->value;
}

EventFlags controlFlag(ModifierTarget target) {
    if (target == ModifierTarget::cmd) return flag::command;
    return target == ModifierTarget::alt ? flag::option : flag::control;
}

EventFlags optionFlag(ModifierTarget target) {
    if (target == ModifierTarget::win) return flag::control;
    return target == ModifierTarget::cmd ? flag::command : flag::option;
}

EventFlags commandFlag(ModifierTarget target) {
    if (target == ModifierTarget::alt) return flag::option;
    return target == ModifierTarget::win ? flag::control : flag::command;
}

/// The left-hand key that produces `flags`, when they differ from the key's own.
KeyCode leftKeyFor(EventFlags flags, EventFlags own, KeyCode physical) {
    if (flags == own) return physical;
    if (flags == flag::command) return key::leftCommand;
    return flags == flag::option ? key::leftOption : key::leftControl;
}

}  // namespace

ModifierTarget controlTarget(const Preferences& preferences) {
    return target(preferences, PreferenceKey::mapCtrl, ModifierTarget::cmd);
}

ModifierTarget optionTarget(const Preferences& preferences) {
    return target(preferences, PreferenceKey::mapOption, ModifierTarget::win);
}

ModifierTarget commandTarget(const Preferences& preferences) {
    return target(preferences, PreferenceKey::mapCmd, ModifierTarget::alt);
}

EventFlags translatedFlags(EventFlags physical, const Preferences& preferences) {
    constexpr EventFlags mapped = flag::control | flag::option | flag::command;
    if (!holdsAny(physical, mapped)) return physical;
    EventFlags logical = physical & ~mapped;
    if (holds(physical, flag::control)) logical |= controlFlag(controlTarget(preferences));
    if (holds(physical, flag::option)) logical |= optionFlag(optionTarget(preferences));
    if (holds(physical, flag::command)) logical |= commandFlag(commandTarget(preferences));
    return logical;
}

KeyCode translatedModifierKey(KeyCode physical, const Preferences& preferences) {
    switch (physical) {
        case key::leftControl:
        case key::rightControl:
            return leftKeyFor(controlFlag(controlTarget(preferences)), flag::control, physical);
        case key::leftOption:
        case key::rightOption:
            return leftKeyFor(optionFlag(optionTarget(preferences)), flag::option, physical);
        case key::leftCommand:
        case key::rightCommand:
            return leftKeyFor(commandFlag(commandTarget(preferences)), flag::command, physical);
        default: return physical;
    }
}

}  // namespace orvel
