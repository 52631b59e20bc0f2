#pragma once

#include "platform/picture.hpp"
#include "platform/window_list.hpp"

#include <optional>

namespace orvel {

/// Pictures of single windows, whatever covers them. Main thread.
class WindowImages {
public:
    virtual ~WindowImages() = default;

    [[nodiscard]] virtual bool hasPermission() const = 0;
    /// Shows the system's prompt; the answer comes later.
    virtual void requestPermission() = 0;
    /// Absent when the window cannot be captured now.
    [[nodiscard]] virtual std::optional<Picture> capture(WindowNumber number) = 0;
};

}  // namespace orvel
