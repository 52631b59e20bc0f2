#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::rig {

/// A key by its place on a PC keyboard, as the X keycode of the evdev set. The name is what a
/// US layout writes on it ("a", "minus", "Return", "Control_L", "Super_L", "F2", "KP_1"), in
/// X11's spelling; a layout in force does not change which key a name means.
struct PhysicalKey {
    int code;

    explicit constexpr PhysicalKey(int keycode) : code(keycode) {}
    /// An unknown name is a RigError.
    PhysicalKey(std::string_view name);  // NOLINT(google-explicit-constructor)
    PhysicalKey(const char* name) : PhysicalKey(std::string_view(name)) {}  // NOLINT

    auto operator<=>(const PhysicalKey&) const = default;
};

/// One end of a keystroke.
struct KeyStroke {
    PhysicalKey key;
    bool down;
};

/// The strokes that type this text (ASCII, newline, tab) on a US keyboard, with the left Shift
/// where it is needed.
std::vector<KeyStroke> strokesFor(std::string_view text);

/// Every key that the name table knows.
std::vector<PhysicalKey> allPhysicalKeys();

}  // namespace orvel::rig
