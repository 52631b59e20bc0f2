#include "platform/x11/x11_input_state.hpp"

namespace orvel::x11 {

X11InputState::X11InputState(InputHub& hub, ServiceConnection& server, const X11Screens& screens)
    : hub_(hub), server_(server), screens_(screens) {}

EventFlags X11InputState::hidFlags() const { return hub_.state().flags(); }

bool X11InputState::isKeyDown(KeyCode keyCode) const { return hub_.state().isDown(keyCode); }

ScreenPoint X11InputState::pointerLocation() const {
    const auto pointer =
        server_.reply<xcb_query_pointer_reply_t>(xcb_query_pointer(server_.raw(), server_.root()));
    if (pointer) lastLocation_ = screens_.layout().toScreen(pointer->root_x, pointer->root_y);
    return lastLocation_;
}

}  // namespace orvel::x11
