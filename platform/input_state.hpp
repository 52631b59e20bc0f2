#pragma once

#include "platform/base/geometry.hpp"
#include "platform/event.hpp"

namespace orvel {

/// What the hardware holds right now. Main thread; answers at once.
class InputState {
public:
    virtual ~InputState() = default;

    /// Modifier flags of the hardware, untouched by what the tap rewrote.
    [[nodiscard]] virtual EventFlags hidFlags() const = 0;
    [[nodiscard]] virtual bool isKeyDown(KeyCode keyCode) const = 0;
    [[nodiscard]] virtual ScreenPoint pointerLocation() const = 0;
};

}  // namespace orvel
