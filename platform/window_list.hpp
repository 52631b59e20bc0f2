#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/base/geometry.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace orvel {

using WindowNumber = std::uint32_t;

struct WindowInfo {
    WindowNumber number = 0;
    ProcessId pid = 0;
    int layer = 0;
    std::string name;  ///< empty when the window server does not tell
    AxRect bounds;
};

enum class WindowListScope {
    all,  ///< also off screen, minimised and on other spaces
    onScreen,
};

/// The window server's own list, desktop elements left out. Main thread.
class WindowList {
public:
    virtual ~WindowList() = default;

    /// Front to back.
    [[nodiscard]] virtual std::vector<WindowInfo> windows(WindowListScope scope) const = 0;
};

}  // namespace orvel
