#pragma once

#include "platform/base/published.hpp"
#include "platform/base/result.hpp"
#include "platform/x11/x_reply.hpp"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvel::x11 {

using Milliseconds = std::chrono::milliseconds;

/// The moment until which an answer is waited for.
using Deadline = std::chrono::steady_clock::time_point;

/// How long a single call to the X server may take when nothing else is said.
inline constexpr Milliseconds kServerLimit{400};

inline Deadline deadlineIn(Milliseconds limit) { return std::chrono::steady_clock::now() + limit; }
/// What is left until the deadline, rounded up; zero when it has passed.
Milliseconds timeLeft(Deadline deadline);

/// The services' own connection to the X server, beside the one that carries keys: whatever a
/// service waits for, no key event stands behind it. Every wait has an end, and an error about a
/// window that died is an absent reply, never the end of the program. One thread.
class ServiceConnection {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// `display` empty: the one the environment names.
    [[nodiscard]] static Result<std::unique_ptr<ServiceConnection>> open(
        const std::string& display = {});
    ~ServiceConnection();
    ServiceConnection(const ServiceConnection&) = delete;
    ServiceConnection& operator=(const ServiceConnection&) = delete;

    [[nodiscard]] xcb_connection_t* raw() const { return connection_; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] int fd() const { return xcb_get_file_descriptor(connection_); }
    /// False once the server is gone.
    [[nodiscard]] bool isAlive() const { return xcb_connection_has_error(connection_) == 0; }

    /// Interns once and remembers; `XCB_ATOM_NONE` when the server does not answer.
    [[nodiscard]] xcb_atom_t atom(std::string_view name);
    /// The name of an atom, empty when there is none.
    [[nodiscard]] std::string atomName(xcb_atom_t atom);
    /// First event number of an extension; absent when the server lacks it.
    [[nodiscard]] std::optional<std::uint8_t> extensionEvents(xcb_extension_t& extension) const;

    /// Waits for the reply of that request; null on an error or after the deadline.
    template <typename T, typename Cookie>
    [[nodiscard]] Reply<T> reply(Cookie cookie, Deadline deadline = deadlineIn(kServerLimit)) {
        return Reply<T>(static_cast<T*>(waitFor(cookie.sequence, deadline)));
    }
    /// Waits for a request without a reply that was sent as checked; false when it failed.
    bool check(xcb_void_cookie_t cookie, Deadline deadline = deadlineIn(kServerLimit));
    void flush() { xcb_flush(connection_); }

    /// Calls `handler` for every event of that number from `dispatch`.
    [[nodiscard]] Subscription onEvent(std::uint8_t responseType, EventHandler handler);
    /// A window of ours that is never shown, beside the screen: for what the protocols want a
    /// window.
    [[nodiscard]] xcb_window_t createHiddenWindow(
        xcb_window_class_t kind = XCB_WINDOW_CLASS_INPUT_ONLY);
    /// Adds event bits to what this connection selected on a window before.
    void selectEvents(xcb_window_t window, std::uint32_t bits);
    /// Takes back everything that was selected on a window.
    void deselectEvents(xcb_window_t window);
    /// How many replies did not come by their deadline.
    [[nodiscard]] unsigned lateReplies() const { return lateReplies_; }
    /// Calls `task` once from `dispatch` when the server answers again: for whoever keeps what a
    /// reply told, and missed one. Nothing waits until then.
    void onceAnswering(std::function<void()> task);
    /// Handles everything that has arrived; to be called when `fd` is readable.
    void dispatch();
    /// `wake` is called when a wait put events aside, so that `dispatch` must run soon although
    /// `fd` may stay quiet; `lost` once when the server is gone.
    void setHooks(std::function<void()> wake, std::function<void()> lost);
    /// Waits until one more event is there or the deadline has passed. Handles none.
    bool waitForEvent(Deadline deadline);

private:
    ServiceConnection(xcb_connection_t* connection, xcb_screen_t* screen);

    void* waitFor(unsigned sequence, Deadline deadline);
    void putEventsAside();
    void askForWake();
    void runMissed();
    void deliver(const xcb_generic_event_t& event);

    struct Handler {
        std::uint8_t responseType;
        std::uint64_t id;
        std::shared_ptr<EventHandler> call;
    };

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    std::unordered_map<std::string, xcb_atom_t> atoms_;
    std::unordered_map<xcb_window_t, std::uint32_t> selected_;
    std::deque<Reply<xcb_generic_event_t>> aside_;
    std::shared_ptr<std::vector<Handler>> handlers_ = std::make_shared<std::vector<Handler>>();
    std::uint64_t nextHandler_ = 1;
    std::function<void()> wake_;
    std::function<void()> lost_;
    bool hasAskedForWake_ = false;
    unsigned lateReplies_ = 0;
    std::vector<std::function<void()>> missed_;
    /// The request whose reply shows that the server answers again.
    unsigned sign_ = 0;
};

}  // namespace orvel::x11
