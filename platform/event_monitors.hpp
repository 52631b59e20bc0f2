#pragma once

#include "platform/event.hpp"
#include "platform/panels.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace orvel {

/// Masks of the events that monitors watch, in the numbers of macOS.
namespace monitor_mask {
inline constexpr EventMask leftMouseDown = EventMask{1} << 1;
inline constexpr EventMask rightMouseDown = EventMask{1} << 3;
inline constexpr EventMask keyDown = EventMask{1} << 10;
inline constexpr EventMask otherMouseDown = EventMask{1} << 25;
}  // namespace monitor_mask

enum class MonitorScope {
    global,  ///< events that go to other applications
    local,   ///< events that go to windows of this program
};

/// An event that a monitor watches.
struct MonitoredEvent {
    EventMask type = 0;  ///< one bit of `monitor_mask`
    KeyCode keyCode = 0;
    /// The panel that receives it; absent for any other window.
    std::optional<PanelId> window;
};

/// Called on the main thread. A local monitor returns whether the event is delivered further;
/// the answer of a global one does not matter.
using MonitorHandler = std::function<bool(const MonitoredEvent&)>;

/// Keeps a monitor installed; removes it when destroyed.
class EventMonitor {
public:
    virtual ~EventMonitor() = default;
};

/// Watches input after the tap, without changing it for other applications. Main thread.
class EventMonitors {
public:
    virtual ~EventMonitors() = default;

    /// `owner` names the monitor in transcripts. Null when the desktop refuses one.
    [[nodiscard]] virtual std::unique_ptr<EventMonitor> add(MonitorScope scope, EventMask mask,
                                                            std::string_view owner,
                                                            MonitorHandler handler) = 0;
};

}  // namespace orvel
