#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/scratch_home.hpp"
#include "tools/rig/x_connection.hpp"

#include <string>

namespace orvel::rig {

/// An xterm, an ordinary application that knows nothing of us, that writes down what it is given.
class XtermApp {
public:
    /// Returns when the terminal is in front, has the keyboard and reads it.
    XtermApp(const ScratchHome& home, const Environment& environment, XConnection& x,
             const std::string& geometry = "80x24+80+80");

    WindowId window() const { return window_; }
    void focus();
    /// The bytes that the terminal gave to the program in it: Return is "\r", Ctrl+C is "\x03".
    std::string received() const;

private:
    XConnection& x_;
    std::filesystem::path record_;
    ChildProcess process_;
    WindowId window_;
};

}  // namespace orvel::rig
