#pragma once

#include "platform/x11/input_devices.hpp"

namespace orvel::x11 {

enum class WheelKind {
    none,        ///< a keyboard, or a pointer that does not scroll
    notched,     ///< a mouse wheel
    continuous,  ///< a touchpad, a pointing stick, a touch screen
};

/// How the device scrolls, as far as its driver's properties and its name tell.
[[nodiscard]] WheelKind wheelKindOf(const InputDevice& device);

}  // namespace orvel::x11
