#pragma once

#include "platform/x11/service_check.hpp"
#include "platform/x11/service_connection.hpp"
#include "platform/x11/window_manager_echo.hpp"
#include "platform/x11/window_wish.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// One line of the window list.
struct WindowSummary {
    WindowState state;
    std::string title;
    /// Neither minimised nor on another workspace.
    bool isOnScreen = false;
};

/// Talks to the window manager about windows, in the words of EWMH and ICCCM. Nothing waits for
/// the window manager: whoever asks may have the keyboard waiting behind him. What a window was
/// asked to become counts until the window manager has got to it; then what became of it is read,
/// and asked for once more where need be. Answers of the server are waited for until the deadline.
/// Main thread.
class WindowManager {
public:
    explicit WindowManager(ServiceConnection& server);
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    /// Its name; empty when none runs.
    [[nodiscard]] std::string name(Deadline deadline = deadlineIn(kServerLimit));
    [[nodiscard]] bool supports(std::string_view feature);

    /// The window as it is, or as it was asked to become a moment ago. Absent when it is gone or
    /// the server does not answer in time.
    [[nodiscard]] std::optional<WindowState> state(xcb_window_t window, Deadline deadline);
    /// Absent when the window is gone.
    [[nodiscard]] std::optional<std::string> title(xcb_window_t window, Deadline deadline);
    /// All of them in one round trip, in the order given; absent for windows that are gone.
    [[nodiscard]] std::vector<std::optional<WindowSummary>> summaries(
        const std::vector<xcb_window_t>& windows, Deadline deadline);
    /// Bottom to top.
    [[nodiscard]] std::vector<xcb_window_t> stacking(Deadline deadline);

    /// Puts what people see of the window there, or gives it that size. A maximised window is none
    /// from then on. False when the window is gone or fills its screen, and while nobody carries
    /// wishes out; a window manager that is late still gets to the request.
    bool move(xcb_window_t window, PixelPlace place, Deadline deadline);
    bool resize(xcb_window_t window, PixelSize size, Deadline deadline);
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
    /// A wish and the moment until which it counts when nobody tells what became of it.
    struct Wished {
        WindowWish wish;
        Deadline counted;
    };

    [[nodiscard]] std::optional<WindowState> wished(xcb_window_t window,
                                                    std::optional<WindowState> now) const;
    /// The state of a window that may be moved or resized.
    [[nodiscard]] std::optional<WindowState> movable(xcb_window_t window, Deadline deadline);
    [[nodiscard]] WindowWish& wishFor(xcb_window_t window);
    /// Has the wish looked after. False when the window manager hangs.
    [[nodiscard]] bool follow();
    /// The window manager has got to every wish.
    void reviewWishes();
    enum class Review { done, underWay, askedAgain };
    [[nodiscard]] Review review(xcb_window_t window, Wished& wished);
    void tellPlace(xcb_window_t window, const WindowFrame& frame, PixelPlace place);
    void tellSize(xcb_window_t window, const WindowFrame& frame, PixelSize size);
    void tellMoveResize(xcb_window_t window, std::uint32_t flags, const RootRect& client);
    void forgetSupported();
    void readSupported();

    ServiceConnection& server_;
    WindowManagerEcho echo_;
    std::map<xcb_window_t, Wished> wishes_;
    bool isSupportedKnown_ = false;
    std::set<xcb_atom_t> supported_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace orvel::x11
