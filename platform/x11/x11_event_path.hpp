#pragma once

#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/guard_process.hpp"
#include "platform/x11/x11_caps_lock.hpp"
#include "platform/x11/x11_event_poster.hpp"
#include "platform/x11/x11_event_tap.hpp"

#include <functional>
#include <memory>
#include <string>

namespace orvel::x11 {

/// The way of input through this process: its own connection to the server, everything that shares
/// it, and the guard that watches over it. Main thread.
class X11EventPath {
public:
    /// Fails when the display cannot be opened or lacks what is needed. The guard is shown a
    /// heartbeat from now on.
    static Result<std::unique_ptr<X11EventPath>> open(qt::QtRunLoop& runLoop, GuardProcess guard,
                                                      const std::string& display = {});
    ~X11EventPath();
    X11EventPath(const X11EventPath&) = delete;
    X11EventPath& operator=(const X11EventPath&) = delete;

    [[nodiscard]] InputHub& hub() { return hub_; }
    [[nodiscard]] X11EventTap& tap() { return tap_; }
    [[nodiscard]] X11EventPoster& poster() { return poster_; }
    [[nodiscard]] X11CapsLock& capsLock() { return capsLock_; }

    /// Called before each event, to bring everything that decides about it up to date.
    void beforeInput(std::function<void()> called) { tap_.beforeEvent(std::move(called)); }
    /// Called after the events of each wake-up, when what they became is on its way.
    void afterInput(std::function<void()> called) { afterInput_ = std::move(called); }
    /// Called once when the server is gone.
    void onServerGone(std::function<void()> told) { serverGone_ = std::move(told); }

private:
    X11EventPath(qt::QtRunLoop& runLoop, GuardProcess guard, std::unique_ptr<X11Session> session);
    void handleInput();
    void beat();

    qt::QtRunLoop& runLoop_;
    std::function<void()> afterInput_;
    std::function<void()> serverGone_;
    std::string display_;
    std::unique_ptr<GuardProcess> guard_;
    std::unique_ptr<X11Session> session_;
    InputHub hub_;
    X11EventTap tap_;
    X11EventPoster poster_;
    X11CapsLock capsLock_;
    std::unique_ptr<qt::ReadableWatch> watch_;
    std::unique_ptr<Timer> heartbeat_;
};

}  // namespace orvel::x11
