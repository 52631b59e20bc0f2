#pragma once

#include "platform/x11/client_windows.hpp"
#include "platform/x11/service_connection.hpp"

#include <xcb/composite.h>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace orvel::x11 {

/// Where the pixels of one client window are.
struct WindowPixmap {
    /// The window itself, or the window manager's frame around it: what is a child of the root.
    xcb_window_t top = XCB_WINDOW_NONE;
    /// What `top` showed when it was named last; none while it never showed anything.
    xcb_pixmap_t pixmap = XCB_PIXMAP_NONE;
    /// Size of the client window when it was named.
    int width = 0;
    int height = 0;
    /// Whether the window was hidden since.
    bool isHidden = false;
};

/// Has the server keep the pixels of every client window apart from the screen, so that they are
/// whole whatever covers the window, and knows their names. A compositor may do the same beside.
/// The windows themselves notice nothing. Main thread.
class WindowPixmaps {
public:
    WindowPixmaps(ServiceConnection& server, const ClientWindows& clients);
    ~WindowPixmaps();
    WindowPixmaps(const WindowPixmaps&) = delete;
    WindowPixmaps& operator=(const WindowPixmaps&) = delete;

    /// False when the server cannot.
    [[nodiscard]] static bool isOffered(ServiceConnection& server, Deadline deadline);

    /// Null for a window that is none of the clients.
    [[nodiscard]] const WindowPixmap* find(xcb_window_t client) const;
    /// Names what the window shows now; false when it shows nothing and for one that is gone.
    bool rename(xcb_window_t client, Deadline deadline);
    /// Gives the name up, and with it the memory behind it once the window is hidden.
    void release(xcb_window_t client);

    /// `told` is called when a client window was hidden: what it showed can still be read.
    void onHidden(std::function<void(xcb_window_t)> told) { hidden_ = std::move(told); }

private:
    using Pixmaps = std::map<xcb_window_t, WindowPixmap>;

    void watch();
    void follow(const std::vector<xcb_window_t>& clients);
    void add(xcb_window_t client);
    void drop(Pixmaps::iterator gone);
    void findTop(xcb_window_t client, WindowPixmap& pixmap, Deadline deadline);
    [[nodiscard]] Pixmaps::iterator showing(xcb_window_t window);

    ServiceConnection& server_;
    const ClientWindows& clients_;
    bool isOffered_;
    Pixmaps pixmaps_;
    std::function<void(xcb_window_t)> hidden_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
