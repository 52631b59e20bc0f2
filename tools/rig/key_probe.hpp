#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/probe_event.hpp"
#include "tools/rig/x_connection.hpp"

#include <functional>
#include <string>
#include <vector>

namespace orvel::rig {

/// A small X application that tells what input it receives.
class KeyProbe {
public:
    enum class Mode { core, xinput, smooth };
    using Events = std::vector<ProbeEvent>;

    struct Options {
        std::string title = "key probe";
        std::string geometry = "800x600+100+100";
        Mode mode = Mode::xinput;
    };

    /// Returns when the window is in front and has the keyboard; nothing is recorded yet.
    KeyProbe(const Environment& environment, XConnection& x)
        : KeyProbe(environment, x, Options()) {}
    KeyProbe(const Environment& environment, XConnection& x, const Options& options);

    WindowId window() const { return window_; }
    void focus();
    /// A point inside the window, on the screen.
    int centreX() const;
    int centreY() const;

    /// Everything that the server has given to the application by now. What is still on its way
    /// through another process (a tap) is not waited for.
    Events drain();
    /// Drained key presses and releases only.
    Events keys();
    /// The text that an input field would hold now.
    std::string text();
    /// Forgets what came so far.
    void clear();

    /// Waits until the events since the last clear() satisfy the condition; returns them as they
    /// are in the end, satisfied or not.
    Events waitFor(const std::function<bool(const Events&)>& condition,
                   std::chrono::milliseconds limit = kPatience);
    /// Waits for this many key presses and releases, repeats not counted.
    Events waitForKeys(std::size_t count, std::chrono::milliseconds limit = kPatience);
    /// Waits for this many button presses, button releases and scroll distances. A window manager
    /// that watches clicks holds them up, so that draining alone may be too early.
    Events waitForButtonsAndScrolls(std::size_t count, std::chrono::milliseconds limit = kPatience);

    ChildProcess& process() { return process_; }

private:
    Events waitForSome(bool (*wanted)(const ProbeEvent&), std::size_t count,
                       std::chrono::milliseconds limit);

    XConnection& x_;
    ChildProcess process_;
    WindowId window_;
    Events events_;
    std::size_t nextLine_ = 0;
    int syncs_ = 0;
};

}  // namespace orvel::rig
