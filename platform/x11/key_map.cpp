#include "platform/x11/key_map.hpp"

#include "platform/x11/key_places.hpp"

#include <X11/keysym.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>

namespace orvel::x11 {

namespace {

std::optional<KeyCode> codeOfPlace(std::string_view name) {
    const auto place =
        std::find_if(kKeyPlaces.begin(), kKeyPlaces.end(),
                     [name](const KeyPlace& candidate) { return candidate.name == name; });
    if (place == kKeyPlaces.end()) return std::nullopt;
    return place->code;
}

std::uint32_t symbolNamed(const std::string& name) {
    return xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
}

bool has(const XKeyDescription& key, std::uint32_t symbol) {
    return symbol != 0 && !key.symbols.empty() && key.symbols.front() == symbol;
}

/// Caps Lock and Control are often exchanged in the keymap; these two follow their symbol.
KeyCode codeOf(const XKeyDescription& key) {
    const KeyCode code = codeOfPlace(key.name).value_or(kForeignKeyBase + key.keycode);
    if (code == key::capsLock && has(key, XK_Control_L)) return key::leftControl;
    if (code == key::capsLock && !has(key, XK_Caps_Lock)) return kForeignKeyBase + key.keycode;
    if (code == key::leftControl && has(key, XK_Caps_Lock)) return key::capsLock;
    return code;
}

std::optional<XModifier> modifierOfSymbol(std::uint32_t symbol) {
    switch (symbol) {
        case XK_Shift_L:
        case XK_Shift_R: return XModifier::shift;
        case XK_Control_L:
        case XK_Control_R: return XModifier::control;
        case XK_Alt_L:
        case XK_Alt_R:
        case XK_Meta_L:
        case XK_Meta_R:
        // Held for a third level, the right Alt key is still the key in Alt's place.
        case XK_ISO_Level3_Shift:
        case XK_Mode_switch: return XModifier::alt;
        case XK_Super_L:
        case XK_Super_R:
        case XK_Hyper_L:
        case XK_Hyper_R: return XModifier::super;
        default: return std::nullopt;
    }
}

}  // namespace

bool isKeyName(const std::string& name) {
    return codeOfPlace(name).has_value() || symbolNamed(name) != XKB_KEY_NoSymbol;
}

KeyMap::KeyMap(const std::vector<XKeyDescription>& keys, const std::string& fnKey) {
    const std::uint32_t fnSymbol = symbolNamed(fnKey);
    for (std::size_t keycode = 0; keycode < codes_.size(); ++keycode) {
        codes_[keycode] = kForeignKeyBase + static_cast<KeyCode>(keycode);
    }
    for (const XKeyDescription& key : keys) {
        const bool isFn = !fnKey.empty() && (key.name == fnKey || has(key, fnSymbol));
        codes_[key.keycode] = isFn ? key::fn : codeOf(key);
        if (!isFn) addModifier(key);
        if (!key.symbols.empty() && key.symbols.front() != 0) {
            symbols_.emplace_back(key.symbols.front(), key.keycode);
        }
        const bool isBlank = std::all_of(key.symbols.begin(), key.symbols.end(),
                                         [](std::uint32_t symbol) { return symbol == 0; });
        if (isBlank && neutral_ == 0) neutral_ = key.keycode;
    }
    choosePlaces(keys);
    // A keymap that uses every key: Control alone does nothing in most applications.
    if (neutral_ == 0) neutral_ = leftKey(XModifier::control);
}

/// In the table's order, so that of two places with one code the first goes out.
void KeyMap::choosePlaces(const std::vector<XKeyDescription>& keys) {
    for (const KeyPlace& place : kKeyPlaces) {
        for (const XKeyDescription& key : keys) {
            const KeyCode code = codes_[key.keycode];
            if (key.name != place.name || code >= kForeignKeyBase) continue;
            XKeycode& keycode = keycodes_[static_cast<std::size_t>(code)];
            if (keycode == 0) keycode = key.keycode;
        }
    }
}

void KeyMap::addModifier(const XKeyDescription& key) {
    if (key.symbols.empty()) return;
    const std::uint32_t symbol = key.symbols.front();
    const auto modifier = modifierOfSymbol(symbol);
    if (!modifier) return;
    modifiers_[key.keycode] = modifier;
    const bool isRight = symbol == XK_Shift_R || symbol == XK_Control_R || symbol == XK_Alt_R ||
                         symbol == XK_Super_R;
    const bool isLeft = symbol == XK_Shift_L || symbol == XK_Control_L || symbol == XK_Alt_L ||
                        symbol == XK_Super_L;
    XKeycode& left = left_[indexOf(*modifier)];
    XKeycode& right = right_[indexOf(*modifier)];
    if (isLeft && left == 0) left = key.keycode;
    if (isRight && right == 0) right = key.keycode;
}

std::optional<KeyCode> KeyMap::keyDownCodeOf(XKeycode keycode) const {
    if (isModifierKey(codes_[keycode])) return std::nullopt;
    return codes_[keycode];
}

XKeycode KeyMap::keycodeOf(KeyCode code) const {
    if (code >= kForeignKeyBase && code < kForeignKeyBase + 256) {
        return static_cast<XKeycode>(code - kForeignKeyBase);
    }
    if (code < 0 || code >= static_cast<KeyCode>(keycodes_.size())) return 0;
    return keycodes_[static_cast<std::size_t>(code)];
}

XKeycode KeyMap::rightKey(XModifier modifier) const {
    const XKeycode right = right_[indexOf(modifier)];
    return right != 0 ? right : leftKey(modifier);
}

XKeycode KeyMap::keyWithSymbol(std::uint32_t symbol) const {
    const auto found = std::find_if(symbols_.begin(), symbols_.end(),
                                    [symbol](const auto& entry) { return entry.first == symbol; });
    return found == symbols_.end() ? XKeycode{0} : found->second;
}

EventFlags flagOfKey(KeyCode code) {
    switch (code) {
        case key::leftShift:
        case key::rightShift: return flag::shift;
        case key::leftControl:
        case key::rightControl: return flag::control;
        case key::leftOption:
        case key::rightOption: return flag::option;
        case key::leftCommand:
        case key::rightCommand: return flag::command;
        case key::fn: return flag::secondaryFn;
        default: return flag::none;
    }
}

bool isModifierKey(KeyCode code) { return code == key::capsLock || flagOfKey(code) != flag::none; }

EventFlags ownFlagsOfKey(KeyCode code) {
    switch (code) {
        case key::leftArrow:
        case key::rightArrow:
        case key::downArrow:
        case key::upArrow: return flag::numericPad | flag::secondaryFn;
        case key::f1:
        case key::f2:
        case key::f3:
        case key::f4:
        case key::f5:
        case key::f6:
        case key::f7:
        case key::f8:
        case key::f9:
        case key::f10:
        case key::f11:
        case key::f12:
        case key::help:
        case key::home:
        case key::pageUp:
        case key::forwardDelete:
        case key::end:
        case key::pageDown: return flag::secondaryFn;
        default:
            return code >= key::keypadDecimal && code <= key::keypad9 && code != 64 && code != 79 &&
                           code != 80 && code != 90
                       ? flag::numericPad
                       : flag::none;
    }
}

XModifiers modifiersForFlags(EventFlags flags) {
    XModifiers modifiers;
    modifiers[indexOf(XModifier::shift)] = holds(flags, flag::shift);
    modifiers[indexOf(XModifier::control)] = holds(flags, flag::command);
    modifiers[indexOf(XModifier::alt)] = holds(flags, flag::option);
    modifiers[indexOf(XModifier::super)] = holds(flags, flag::control);
    return modifiers;
}

XKeycode modifierKeyFor(const KeyMap& map, KeyCode code) {
    switch (code) {
        case key::leftShift: return map.leftKey(XModifier::shift);
        case key::rightShift: return map.rightKey(XModifier::shift);
        case key::leftCommand: return map.leftKey(XModifier::control);
        case key::rightCommand: return map.rightKey(XModifier::control);
        case key::leftOption: return map.leftKey(XModifier::alt);
        case key::rightOption: return map.rightKey(XModifier::alt);
        case key::leftControl: return map.leftKey(XModifier::super);
        case key::rightControl: return map.rightKey(XModifier::super);
        case key::capsLock: return map.keycodeOf(key::capsLock);
        default: return 0;
    }
}

}  // namespace orvel::x11
