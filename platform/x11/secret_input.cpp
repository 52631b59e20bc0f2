#include "platform/x11/secret_input.hpp"

namespace orvel::x11 {

SecretInput::SecretInput(ServiceConnection& server)
    : server_(server), window_(xcb_generate_id(server.raw())) {
    xcb_create_window(server_.raw(), XCB_COPY_FROM_PARENT, window_, server_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

SecretInput::~SecretInput() {
    if (server_.isAlive()) xcb_destroy_window(server_.raw(), window_);
}

bool SecretInput::isTyped() {
    if (passwordField_ && passwordField_()) return true;
    // A grab for a window that is not shown never succeeds. Only the reason differs: whether
    // another client has the keyboard is looked at first.
    const auto reply = server_.reply<xcb_grab_keyboard_reply_t>(xcb_grab_keyboard(
        server_.raw(), 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    return !reply || reply->status != XCB_GRAB_STATUS_NOT_VIEWABLE;
}

}  // namespace orvel::x11
