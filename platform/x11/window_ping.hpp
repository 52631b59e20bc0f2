#pragma once

#include "platform/x11/service_connection.hpp"

#include <cstdint>
#include <functional>
#include <optional>

namespace orvel::x11 {

/// Asks windows for a sign of life, as window managers do. The answer says more: whatever the
/// server sent to the window before is handled by then. One thread.
class WindowPing {
public:
    enum class Sent { yes, notUnderstood, windowGone };
    using Number = std::uint32_t;

    /// `answered` is called from `ServiceConnection::dispatch`.
    WindowPing(ServiceConnection& server, std::function<void(Number)> answered);

    /// Asks the window, or the one around it that understands. `number` gets the number of the
    /// question.
    [[nodiscard]] Sent send(xcb_window_t window, Number& number);

private:
    enum class Understands { yes, no, windowGone };
    [[nodiscard]] Understands understands(xcb_window_t window);
    [[nodiscard]] std::optional<xcb_window_t> parentOf(xcb_window_t window);
    void ask(xcb_window_t window, Number number);

    ServiceConnection& server_;
    Number last_ = 0xF0000000U;  ///< Far from the times by which window managers number theirs.
    Subscription subscription_;
};

}  // namespace orvel::x11
