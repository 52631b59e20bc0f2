#include "platform/x11/keyboard_target.hpp"

namespace orvel::x11 {

namespace {

constexpr Milliseconds kLimit{3000};
/// Windows that come and go this often in a row are looked for again later.
constexpr int kAttempts = 5;

}  // namespace

KeyboardTarget::KeyboardTarget(ServiceConnection& server) : server_(server) {
    subscriptions_.push_back(
        server_.onEvent(XCB_FOCUS_OUT, [this](const xcb_generic_event_t& event) {
            focusLost(reinterpret_cast<const xcb_focus_out_event_t&>(event));
        }));
    subscriptions_.push_back(
        server_.onEvent(XCB_UNMAP_NOTIFY, [this](const xcb_generic_event_t& event) {
            if (reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window == window_)
                forget();
        }));
}

void KeyboardTarget::focusLost(const xcb_focus_out_event_t& event) {
    // While another client holds the keyboard the window stays the same, and is told otherwise.
    const bool isGrab = event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
    if (event.event == window_ && !isGrab && event.detail != XCB_NOTIFY_DETAIL_POINTER) forget();
}

void KeyboardTarget::forget() {
    isKnown_ = false;
    ++changes_;
}

bool KeyboardTarget::watch(xcb_window_t window) {
    server_.selectEvents(window, XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    // Asked again, since it may have lost the keyboard before it was watched.
    const auto question = xcb_get_input_focus(server_.raw());
    const auto answer = server_.reply<xcb_get_input_focus_reply_t>(question, deadlineIn(kLimit));
    if (answer == nullptr || answer->focus != window) return false;
    knownSince_ = question.sequence;
    return true;
}

void KeyboardTarget::update() {
    for (int attempt = 0; attempt < kAttempts && !isKnown_ && server_.isAlive(); ++attempt) {
        const auto answer = server_.reply<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus(server_.raw()), deadlineIn(kLimit));
        if (answer == nullptr) return;
        // Without a window of its own the keyboard follows the pointer, or nobody has it.
        if (answer->focus <= XCB_INPUT_FOCUS_POINTER_ROOT) return;
        window_ = answer->focus;
        isKnown_ = watch(window_);
    }
}

xcb_window_t KeyboardTarget::windowAt(const xcb_generic_event_t& event) const {
    const bool isLater = static_cast<std::int32_t>(event.full_sequence - knownSince_) >= 0;
    return isKnown_ && isLater ? window_ : kNoWindow;
}

}  // namespace orvel::x11
