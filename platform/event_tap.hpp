#pragma once

#include "platform/event.hpp"

#include <functional>

namespace orvel {

/// What becomes of an event that came through the tap.
enum class EventVerdict {
    pass,     ///< goes on as it came
    modify,   ///< goes on as the handler rewrote it
    swallow,  ///< reaches nobody
};

/// Decides about one event and may rewrite it in place; must return quickly.
using EventHandler = std::function<EventVerdict(Event&)>;

struct EventTapRequest {
    int location = 1;   ///< 1: the login session
    int placement = 0;  ///< 0: before every other tap
    int options = 0;    ///< 0: may modify and drop events
    EventMask mask = 0;
};

/// The one hook into the session's input. Main thread; the handler runs there too.
class EventTap {
public:
    virtual ~EventTap() = default;

    /// Installs the tap, not yet enabled. False when the desktop refuses one; nothing is left
    /// behind then.
    [[nodiscard]] virtual bool create(const EventTapRequest& request, EventHandler handler) = 0;
    /// Starts, or starts again, the delivery of events. No effect without a tap.
    virtual void enable() = 0;
    [[nodiscard]] virtual bool exists() const = 0;
    /// False also while the desktop has switched the tap off.
    [[nodiscard]] virtual bool isEnabled() const = 0;
};

}  // namespace orvel
