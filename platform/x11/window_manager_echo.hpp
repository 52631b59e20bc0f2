#pragma once

#include "platform/x11/service_connection.hpp"

#include <array>
#include <functional>
#include <optional>

namespace orvel::x11 {

/// Tells when the window manager has got to everything it was asked, without anybody waiting for
/// it. It handles requests in order, so that the answer to a question about a window of ours comes
/// after whatever was asked before. One question is under way at a time. One thread.
class WindowManagerEcho {
public:
    /// `answered` is called from `ServiceConnection::dispatch`.
    WindowManagerEcho(ServiceConnection& server, std::function<void()> answered);
    ~WindowManagerEcho();
    WindowManagerEcho(const WindowManagerEcho&) = delete;
    WindowManagerEcho& operator=(const WindowManagerEcho&) = delete;

    /// Has `answered` called after the requests that were sent until now.
    void ask();
    /// Another window manager took over: what the one before was asked is void.
    void forget();
    /// Whether a question has waited so long that the window manager must be taken for hung.
    [[nodiscard]] bool isSilent() const;

private:
    void createWindows();
    void destroyWindows();
    void send();
    void received();

    ServiceConnection& server_;
    std::function<void()> answered_;
    /// Never shown; the window manager writes on the first of them when it has got to our question.
    /// They change places with each question, since some write more than once.
    std::array<xcb_window_t, 2> windows_{};
    std::optional<Deadline> patience_;  ///< of the question under way
    bool isAskedAgain_ = false;
    Subscription subscription_;
};

}  // namespace orvel::x11
