#pragma once

#include "platform/x11/window_frame.hpp"

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

}  // namespace orvel::x11
