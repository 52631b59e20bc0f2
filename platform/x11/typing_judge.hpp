#pragma once

#include "platform/x11/accessible_focus.hpp"
#include "platform/x11/service_connection.hpp"

#include <chrono>
#include <map>
#include <optional>
#include <set>

namespace orvel::x11 {

/// Knows which applications tell what has their keyboard, and judges by that what may be kept of
/// what was typed into them. Waits for applications; one thread.
class TypingJudge {
public:
    TypingJudge(ServiceConnection& server, AccessibleFocus& focus)
        : server_(server), focus_(focus) {}

    /// What is known of the application that a window belongs to.
    enum class Teller {
        notKnown,  ///< gone before it was asked, or not seen for long enough
        silent,    ///< tells nobody anything
        telling,   ///< tells what has its keyboard
    };
    /// The window has the keyboard from now on, for the first time or again.
    void see(xcb_window_t window);
    [[nodiscard]] Teller tellerOf(xcb_window_t window);
    /// When an application that has told nothing yet counts as silent; none for others.
    [[nodiscard]] std::optional<Deadline> silentFrom(xcb_window_t window) const;

    /// Asks what has the keyboard in the telling application of that window. False when that did
    /// not get known.
    [[nodiscard]] bool ask(xcb_window_t window);
    /// Whether what was typed into that application at `since` or later, and was handled before the
    /// last `ask`, went into no password field.
    [[nodiscard]] bool isOpen(xcb_window_t window, AccessibleFocus::Moment since) const;
    /// The same for a silent application: no field that is known is open elsewhere.
    [[nodiscard]] bool isOpenInSilence(AccessibleFocus::Moment since);

private:
    struct Application {
        int process = 0;
        AccessibleFocus::Names names;
        Deadline seen{};
    };
    [[nodiscard]] int processOf(xcb_window_t window);
    [[nodiscard]] const Application* applicationOf(xcb_window_t window) const;
    void findNames(Application& application);

    ServiceConnection& server_;
    AccessibleFocus& focus_;
    std::map<xcb_window_t, int> windows_;
    std::map<int, Application> applications_;
    std::set<int> silent_;
    AccessibleFocus::Moment busLostSince_ = 0;
};

}  // namespace orvel::x11
