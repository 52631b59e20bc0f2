#include "platform/x11/window_manager_echo.hpp"

#include "platform/x11/window_properties.hpp"

#include <utility>

namespace orvel::x11 {

namespace {

/// Long enough for a busy window manager, short enough for people.
constexpr Milliseconds kPatience{300};

}  // namespace

WindowManagerEcho::WindowManagerEcho(ServiceConnection& server, std::function<void()> answered)
    : server_(server), answered_(std::move(answered)) {
    createWindows();
    subscription_ = server_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.window == windows_[0] && notice.state == XCB_PROPERTY_NEW_VALUE) received();
    });
}

WindowManagerEcho::~WindowManagerEcho() { destroyWindows(); }

void WindowManagerEcho::createWindows() {
    for (auto& window : windows_) {
        window = server_.createHiddenWindow(XCB_WINDOW_CLASS_INPUT_OUTPUT);
        server_.selectEvents(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
}

void WindowManagerEcho::destroyWindows() {
    for (const auto window : windows_) {
        server_.deselectEvents(window);
        xcb_destroy_window(server_.raw(), window);
    }
}

void WindowManagerEcho::ask() {
    if (patience_) {
        isAskedAgain_ = true;
        return;
    }
    send();
}

void WindowManagerEcho::send() {
    patience_ = deadlineIn(kPatience);
    std::swap(windows_[0], windows_[1]);
    tellWindowManager(server_, windows_[0], "_NET_REQUEST_FRAME_EXTENTS", {});
}

void WindowManagerEcho::received() {
    if (!std::exchange(patience_, std::nullopt)) return;
    if (std::exchange(isAskedAgain_, false)) return send();
    answered_();
}

void WindowManagerEcho::forget() {
    // A late answer must not be taken for the answer to the next question.
    destroyWindows();
    createWindows();
    patience_.reset();
    isAskedAgain_ = false;
}

bool WindowManagerEcho::isSilent() const {
    return patience_ && timeLeft(*patience_) == Milliseconds::zero();
}

}  // namespace orvel::x11
