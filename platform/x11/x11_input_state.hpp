#pragma once

#include "platform/input_state.hpp"
#include "platform/x11/input_hub.hpp"
#include "platform/x11/x11_screens.hpp"

namespace orvel::x11 {

/// What the keyboards hold, as the tap sees it, and where the pointer is.
class X11InputState final : public InputState {
public:
    X11InputState(InputHub& hub, ServiceConnection& server, const X11Screens& screens);

    [[nodiscard]] EventFlags hidFlags() const override;
    [[nodiscard]] bool isKeyDown(KeyCode keyCode) const override;
    /// Where it was last known to be while the server does not answer.
    [[nodiscard]] ScreenPoint pointerLocation() const override;

private:
    InputHub& hub_;
    ServiceConnection& server_;
    const X11Screens& screens_;
    mutable ScreenPoint lastLocation_;
};

}  // namespace orvel::x11
