#pragma once

#include "platform/base/event_flags.hpp"
#include "platform/base/geometry.hpp"

#include <functional>
#include <optional>
#include <string>

namespace orvel {

struct StatusItemSpec {
    double length = -1;  ///< -1: as long as its content
    std::string image;
    double imageSize = 18;       ///< points, width and height
    std::string fallbackSymbol;  ///< shown when the image is missing
    std::string fallbackDescription;
};

enum class StatusItemButton { left, right };

/// How a status item was clicked; the release of the button counts.
struct StatusItemClick {
    StatusItemButton button = StatusItemButton::left;
    EventFlags flags = 0;
};

/// This program's item in the desktop's status bar. Main thread.
class StatusBar {
public:
    virtual ~StatusBar() = default;

    /// Shows the item. One item at most.
    virtual void createItem(const StatusItemSpec& spec,
                            std::function<void(const StatusItemClick&)> clicked) = 0;
    /// Absent when the desktop shows no button or does not say where.
    [[nodiscard]] virtual std::optional<ScreenRect> buttonFrame() const = 0;
    /// Marks the item as one whose program is paused.
    virtual void showPaused(bool isPaused) = 0;
};

}  // namespace orvel
