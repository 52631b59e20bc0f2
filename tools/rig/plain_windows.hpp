#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/x_connection.hpp"

#include <string>

namespace orvel::rig {

/// An application of its own with any number of windows of one colour.
class PlainWindows {
public:
    struct Window {
        std::string title = "plain";
        std::string className = "Plain";
        int width = 300;
        int height = 200;
        int minWidth = 0;
        int minHeight = 0;
        std::string colour = "3366cc";  ///< RRGGBB
    };

    PlainWindows(const Environment& environment, XConnection& x);

    /// Returns when the window shows.
    WindowId open(const Window& window);
    void fill(WindowId window, const std::string& colour);
    void setTitle(WindowId window, const std::string& title);
    void destroy(WindowId window);
    /// Waits until the window manager asked to close that window; false when it did not.
    bool wasClosed(WindowId window) const;

    ChildProcess& process() { return process_; }

private:
    XConnection& x_;
    mutable ChildProcess process_;
};

}  // namespace orvel::rig
