#pragma once

#include "platform/event.hpp"

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvel::x11 {

/// Number of a key at the X server; 0 is no key.
using XKeycode = std::uint8_t;
using XKeySet = std::bitset<256>;

/// What a modifier key does in X11 applications.
enum class XModifier : std::uint8_t { shift, control, alt, super };
inline constexpr std::size_t kXModifierCount = 4;
using XModifiers = std::bitset<kXModifierCount>;

constexpr std::size_t indexOf(XModifier modifier) { return static_cast<std::size_t>(modifier); }

/// One key as the server's keymap describes it.
struct XKeyDescription {
    XKeycode keycode = 0;
    std::string name;                    ///< of its place, such as "AC01"
    std::vector<std::uint32_t> symbols;  ///< keysyms of all groups and levels, in that order
};

/// The keymap of the session as this back end sees it: places by which keys come in, and keys by
/// which they go out. Pure data, made anew when the server's keymap changes.
class KeyMap {
public:
    KeyMap() = default;
    /// `fnKey` names the key that acts as Fn by its place or symbol; empty for none.
    explicit KeyMap(const std::vector<XKeyDescription>& keys, const std::string& fnKey = {});

    /// The key's code by its place.
    [[nodiscard]] KeyCode keyCodeOf(XKeycode keycode) const { return codes_[keycode]; }
    /// The key's code when pressing it is a key-down; absent for modifiers, which change flags.
    [[nodiscard]] std::optional<KeyCode> keyDownCodeOf(XKeycode keycode) const;
    /// The key that goes out for a code; 0 when this keyboard has none.
    [[nodiscard]] XKeycode keycodeOf(KeyCode code) const;
    /// What holding the key does in applications; absent for ordinary keys.
    [[nodiscard]] std::optional<XModifier> modifierOf(XKeycode keycode) const {
        return modifiers_[keycode];
    }
    /// The key that goes out for a modifier; 0 when this keyboard has none.
    [[nodiscard]] XKeycode leftKey(XModifier modifier) const { return left_[indexOf(modifier)]; }
    [[nodiscard]] XKeycode rightKey(XModifier modifier) const;
    /// The first key that gives `symbol` without modifiers; 0 when there is none.
    [[nodiscard]] XKeycode keyWithSymbol(std::uint32_t symbol) const;
    /// A key that means nothing to any application.
    [[nodiscard]] XKeycode neutralKey() const { return neutral_; }

private:
    void choosePlaces(const std::vector<XKeyDescription>& keys);
    void addModifier(const XKeyDescription& key);

    std::array<KeyCode, 256> codes_{};
    std::array<XKeycode, 128> keycodes_{};
    std::array<std::optional<XModifier>, 256> modifiers_{};
    std::array<XKeycode, kXModifierCount> left_{};
    std::array<XKeycode, kXModifierCount> right_{};
    std::vector<std::pair<std::uint32_t, XKeycode>> symbols_;
    XKeycode neutral_ = 0;
};

/// Whether `name` is the place of a key or the name of a symbol.
[[nodiscard]] bool isKeyName(const std::string& name);

/// True for the keys whose changes are flags-changed events.
[[nodiscard]] bool isModifierKey(KeyCode code);
/// The flag that a held modifier key sets; none for ordinary keys and Caps Lock.
[[nodiscard]] EventFlags flagOfKey(KeyCode code);
/// The flags that the key itself adds to its events (keypad, arrows, function keys).
[[nodiscard]] EventFlags ownFlagsOfKey(KeyCode code);

/// The language of X11 applications: Command is Control, Control is Super, Option is Alt.
[[nodiscard]] XModifiers modifiersForFlags(EventFlags flags);
/// The key that goes out for a modifier key that was rewritten or posted; 0 for Fn.
[[nodiscard]] XKeycode modifierKeyFor(const KeyMap& map, KeyCode code);

}  // namespace orvel::x11
