#pragma once

#include "platform/x11/service_check.hpp"
#include "platform/x11/service_connection.hpp"
#include "platform/x11/window_frame.hpp"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// What can be seen of one window right now.
struct WindowState {
    RootRect client;
    WindowFrame frame;
    bool isMinimized = false;
    bool isMaximized = false;
    bool isFullscreen = false;

    [[nodiscard]] RootRect seen() const { return frame.seen(client); }
};

/// One line of the window list.
struct WindowSummary {
    WindowState state;
    std::string title;
    /// Neither minimised nor on another workspace.
    bool isOnScreen = false;
};

/// Talks to the window manager about windows, in the words of EWMH and ICCCM. Every call ends by
/// its deadline. Main thread.
class WindowManager {
public:
    explicit WindowManager(ServiceConnection& server);
    ~WindowManager();
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    /// Its name; empty when none runs.
    [[nodiscard]] std::string name(Deadline deadline = deadlineIn(kServerLimit));
    [[nodiscard]] bool supports(std::string_view feature);

    /// Absent when the window is gone or the server does not answer in time.
    [[nodiscard]] std::optional<WindowState> state(xcb_window_t window, Deadline deadline);
    /// Absent when the window is gone.
    [[nodiscard]] std::optional<std::string> title(xcb_window_t window, Deadline deadline);
    /// All of them in one round trip, in the order given; absent for windows that are gone.
    [[nodiscard]] std::vector<std::optional<WindowSummary>> summaries(
        const std::vector<xcb_window_t>& windows, Deadline deadline);
    /// Bottom to top.
    [[nodiscard]] std::vector<xcb_window_t> stacking(Deadline deadline);

    /// Asks for a client area and waits until the window manager has decided. What it made of
    /// it: `state`. False when the window is gone or nobody decided in time; a window manager that
    /// is late still gets to the request. Absent parts stay.
    bool moveClient(xcb_window_t window, int x, int y, Deadline deadline);
    bool resizeClient(xcb_window_t window, int width, int height, Deadline deadline);
    bool removeMaximized(xcb_window_t window, Deadline deadline);
    bool minimize(xcb_window_t window, Deadline deadline);
    /// Brings the window to the front, out of its minimised state too, and gives it the keyboard.
    bool activate(xcb_window_t window, Deadline deadline);
    /// Activates the topmost of these windows that is not minimised, else the topmost.
    bool activateTopmost(const std::vector<xcb_window_t>& windows, Deadline deadline);
    bool raise(xcb_window_t window, Deadline deadline);
    /// Asks the application to close the window, as its close button does.
    void close(xcb_window_t window);
    /// Has the server end the connection of the window's application.
    void disconnectOwner(xcb_window_t window);

    /// False when the window manager cannot.
    bool toggleShowDesktop(Deadline deadline);

    [[nodiscard]] ServiceCheck check();

private:
    /// Waits until what was asked before about a window has become of it what it will.
    bool waitUntilDecided(xcb_window_t window, Deadline deadline);
    /// Waits until the window manager has handled everything sent to it before.
    bool waitUntilHandled(Deadline deadline);
    bool waitUntilQuiet(xcb_window_t window, Deadline deadline);
    bool waitForMinimized(xcb_window_t window, bool wanted, Deadline deadline);
    void createBarrier();
    void replaceBarrier();
    void tellMoveResize(xcb_window_t window, std::uint32_t flags, const RootRect& client);
    bool sendMoveResize(xcb_window_t window, std::uint32_t flags, const RootRect& client,
                        Deadline deadline);
    void readSupported();

    ServiceConnection& server_;
    /// Never shown; the window manager writes on it when it has got to our question.
    xcb_window_t barrier_ = XCB_WINDOW_NONE;
    bool isSupportedKnown_ = false;
    std::set<xcb_atom_t> supported_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
