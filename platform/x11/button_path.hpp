#pragma once

#include "platform/event_tap.hpp"
#include "platform/x11/hid_state.hpp"

#include <functional>
#include <vector>

namespace orvel::x11 {

/// Numbers of buttons at the X server. Four to seven are the wheel.
using XButton = int;
namespace button {
inline constexpr XButton left = 1, middle = 2, right = 3, wheelUp = 4, wheelDown = 5;
inline constexpr XButton wheelLeft = 6, wheelRight = 7, back = 8, forward = 9;
constexpr bool isWheel(XButton number) { return number >= wheelUp && number <= wheelRight; }
}  // namespace button

/// The number of a button in events, where the middle one is 2 and the side buttons are 3 and 4.
[[nodiscard]] std::int64_t buttonNumberOf(XButton number);
[[nodiscard]] XButton xButtonOf(std::int64_t buttonNumber);

/// The way of buttons and the wheel through the handler. A press owns its release here too.
class ButtonPath {
public:
    /// Presses or releases a button of the synthetic pointer.
    using Send = std::function<void(XButton, bool down)>;

    ButtonPath(const HidState& state, Send send);

    void setHandler(EventHandler handler) { handler_ = std::move(handler); }

    /// A press that the server holds back until the answer: true lets press and release go on to
    /// the application as they came, without coming here again.
    [[nodiscard]] bool letsGo(XButton number);
    /// The release of a press that was not let go.
    void endHeld(XButton number);

    /// Press, release and wheel of a pointer that was taken whole.
    void press(int device, XButton number);
    void release(int device, XButton number);
    /// Notes a button that was held when its pointer was taken: applications have seen it.
    void adopt(int device, XButton number) { entries_.push_back({device, number, number}); }
    /// The device is gone or given back: its buttons come up.
    void releaseDevice(int device);

private:
    struct Entry {
        int device;
        XButton number;
        XButton out;
    };

    void turnWheel(XButton number);
    void click(XButton number);
    [[nodiscard]] XButton decide(EventType type, XButton number);
    [[nodiscard]] EventVerdict ask(Event& event) const;

    const HidState& state_;
    Send send_;
    EventHandler handler_;
    std::vector<Entry> entries_;
};

}  // namespace orvel::x11
