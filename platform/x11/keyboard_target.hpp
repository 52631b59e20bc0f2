#pragma once

#include "platform/x11/service_connection.hpp"

#include <cstdint>
#include <vector>

namespace orvel::x11 {

inline constexpr xcb_window_t kNoWindow = XCB_WINDOW_NONE;

/// The window that gets the keys of the session, known exactly: for every event of this connection
/// it can tell whether the window was the same when the server made that event. One thread.
class KeyboardTarget {
public:
    explicit KeyboardTarget(ServiceConnection& server);

    /// Finds the window when it is not known. Waits for the server.
    void update();
    /// Where keys go; `kNoWindow` while that is not known.
    [[nodiscard]] xcb_window_t window() const { return isKnown_ ? window_ : kNoWindow; }
    /// Where keys went when the server made `event`; `kNoWindow` when that cannot be said.
    [[nodiscard]] xcb_window_t windowAt(const xcb_generic_event_t& event) const;
    /// Counts the changes.
    [[nodiscard]] unsigned changes() const { return changes_; }

private:
    void focusLost(const xcb_focus_out_event_t& event);
    void forget();
    [[nodiscard]] bool watch(xcb_window_t window);

    ServiceConnection& server_;
    bool isKnown_ = false;
    xcb_window_t window_ = kNoWindow;
    std::uint32_t knownSince_ = 0;  ///< number of the request that confirmed the window
    unsigned changes_ = 0;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
