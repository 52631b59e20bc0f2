#include "tools/rig/physical_key.hpp"

#include "tools/rig/rig_error.hpp"

#include <algorithm>
#include <array>
#include <linux/input-event-codes.h>

namespace orvel::rig {
namespace {

struct NamedKey {
    std::string_view name;
    int kernelCode;
};

// X keycodes are the kernel's codes shifted past the eight that X never uses.
constexpr int kFirstKeycode = 8;

constexpr auto kNames = std::to_array<NamedKey>({
    {"Escape", KEY_ESC},
    {"1", KEY_1},
    {"2", KEY_2},
    {"3", KEY_3},
    {"4", KEY_4},
    {"5", KEY_5},
    {"6", KEY_6},
    {"7", KEY_7},
    {"8", KEY_8},
    {"9", KEY_9},
    {"0", KEY_0},
    {"minus", KEY_MINUS},
    {"equal", KEY_EQUAL},
    {"BackSpace", KEY_BACKSPACE},
    {"Tab", KEY_TAB},
    {"q", KEY_Q},
    {"w", KEY_W},
    {"e", KEY_E},
    {"r", KEY_R},
    {"t", KEY_T},
    {"y", KEY_Y},
    {"u", KEY_U},
    {"i", KEY_I},
    {"o", KEY_O},
    {"p", KEY_P},
    {"bracketleft", KEY_LEFTBRACE},
    {"bracketright", KEY_RIGHTBRACE},
    {"Return", KEY_ENTER},
    {"Control_L", KEY_LEFTCTRL},
    {"a", KEY_A},
    {"s", KEY_S},
    {"d", KEY_D},
    {"f", KEY_F},
    {"g", KEY_G},
    {"h", KEY_H},
    {"j", KEY_J},
    {"k", KEY_K},
    {"l", KEY_L},
    {"semicolon", KEY_SEMICOLON},
    {"apostrophe", KEY_APOSTROPHE},
    {"grave", KEY_GRAVE},
    {"Shift_L", KEY_LEFTSHIFT},
    {"backslash", KEY_BACKSLASH},
    {"z", KEY_Z},
    {"x", KEY_X},
    {"c", KEY_C},
    {"v", KEY_V},
    {"b", KEY_B},
    {"n", KEY_N},
    {"m", KEY_M},
    {"comma", KEY_COMMA},
    {"period", KEY_DOT},
    {"slash", KEY_SLASH},
    {"Shift_R", KEY_RIGHTSHIFT},
    {"KP_Multiply", KEY_KPASTERISK},
    {"Alt_L", KEY_LEFTALT},
    {"space", KEY_SPACE},
    {"Caps_Lock", KEY_CAPSLOCK},
    {"F1", KEY_F1},
    {"F2", KEY_F2},
    {"F3", KEY_F3},
    {"F4", KEY_F4},
    {"F5", KEY_F5},
    {"F6", KEY_F6},
    {"F7", KEY_F7},
    {"F8", KEY_F8},
    {"F9", KEY_F9},
    {"F10", KEY_F10},
    {"Num_Lock", KEY_NUMLOCK},
    {"Scroll_Lock", KEY_SCROLLLOCK},
    {"KP_7", KEY_KP7},
    {"KP_8", KEY_KP8},
    {"KP_9", KEY_KP9},
    {"KP_Subtract", KEY_KPMINUS},
    {"KP_4", KEY_KP4},
    {"KP_5", KEY_KP5},
    {"KP_6", KEY_KP6},
    {"KP_Add", KEY_KPPLUS},
    {"KP_1", KEY_KP1},
    {"KP_2", KEY_KP2},
    {"KP_3", KEY_KP3},
    {"KP_0", KEY_KP0},
    {"KP_Decimal", KEY_KPDOT},
    {"less", KEY_102ND},
    {"F11", KEY_F11},
    {"F12", KEY_F12},
    {"KP_Enter", KEY_KPENTER},
    {"Control_R", KEY_RIGHTCTRL},
    {"KP_Divide", KEY_KPSLASH},
    {"Print", KEY_SYSRQ},
    {"Alt_R", KEY_RIGHTALT},
    {"Home", KEY_HOME},
    {"Up", KEY_UP},
    {"Prior", KEY_PAGEUP},
    {"Left", KEY_LEFT},
    {"Right", KEY_RIGHT},
    {"End", KEY_END},
    {"Down", KEY_DOWN},
    {"Next", KEY_PAGEDOWN},
    {"Insert", KEY_INSERT},
    {"Delete", KEY_DELETE},
    {"XF86AudioMute", KEY_MUTE},
    {"XF86AudioLowerVolume", KEY_VOLUMEDOWN},
    {"XF86AudioRaiseVolume", KEY_VOLUMEUP},
    {"Pause", KEY_PAUSE},
    {"Super_L", KEY_LEFTMETA},
    {"Super_R", KEY_RIGHTMETA},
    {"Menu", KEY_COMPOSE},
    {"F13", KEY_F13},
    {"F14", KEY_F14},
});

struct TypedCharacter {
    char character;
    std::string_view key;
    bool shift;
};

constexpr auto kPunctuation = std::to_array<TypedCharacter>({
    {' ', "space", false},
    {'\n', "Return", false},
    {'\t', "Tab", false},
    {'-', "minus", false},
    {'_', "minus", true},
    {'=', "equal", false},
    {'+', "equal", true},
    {'[', "bracketleft", false},
    {'{', "bracketleft", true},
    {']', "bracketright", false},
    {'}', "bracketright", true},
    {';', "semicolon", false},
    {':', "semicolon", true},
    {'\'', "apostrophe", false},
    {'"', "apostrophe", true},
    {'`', "grave", false},
    {'~', "grave", true},
    {'\\', "backslash", false},
    {'|', "backslash", true},
    {',', "comma", false},
    {'<', "comma", true},
    {'.', "period", false},
    {'>', "period", true},
    {'/', "slash", false},
    {'?', "slash", true},
    {'!', "1", true},
    {'@', "2", true},
    {'#', "3", true},
    {'$', "4", true},
    {'%', "5", true},
    {'^', "6", true},
    {'&', "7", true},
    {'*', "8", true},
    {'(', "9", true},
    {')', "0", true},
});

TypedCharacter typedCharacter(const char& character) {
    const std::string_view itself(&character, 1);
    if ((character >= 'a' && character <= 'z') || (character >= '0' && character <= '9')) {
        return {character, itself, false};
    }
    const auto* found =
        std::find_if(kPunctuation.begin(), kPunctuation.end(),
                     [&](const TypedCharacter& typed) { return typed.character == character; });
    if (found == kPunctuation.end()) {
        throw RigError("no key of a US keyboard types '" + std::string(itself) + "'");
    }
    return *found;
}

}  // namespace

PhysicalKey::PhysicalKey(std::string_view name) : code(0) {
    const auto* found = std::find_if(kNames.begin(), kNames.end(),
                                     [&](const NamedKey& key) { return key.name == name; });
    if (found == kNames.end()) {
        throw RigError("no key is named '" + std::string(name) + "'");
    }
    code = found->kernelCode + kFirstKeycode;
}

std::vector<KeyStroke> strokesFor(std::string_view text) {
    std::vector<KeyStroke> strokes;
    for (const char character : text) {
        const bool capital = character >= 'A' && character <= 'Z';
        const char small = capital ? static_cast<char>(character - 'A' + 'a') : character;
        const TypedCharacter typed = typedCharacter(small);
        const bool shift = capital || typed.shift;
        const PhysicalKey key(typed.key);
        if (shift) {
            strokes.push_back({"Shift_L", true});
        }
        strokes.push_back({key, true});
        strokes.push_back({key, false});
        if (shift) {
            strokes.push_back({"Shift_L", false});
        }
    }
    return strokes;
}

std::vector<PhysicalKey> allPhysicalKeys() {
    std::vector<PhysicalKey> keys;
    keys.reserve(kNames.size());
    for (const NamedKey& named : kNames) {
        keys.emplace_back(named.kernelCode + kFirstKeycode);
    }
    return keys;
}

}  // namespace orvel::rig
