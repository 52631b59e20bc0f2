#include "platform/x11/button_path.hpp"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orvel::x11 {

namespace {

/// Presses that the server holds back come from the session's pointer, not from one device.
constexpr int kHeldBack = 0;
constexpr std::int64_t kPixelsPerLine = 10;

}  // namespace

std::int64_t buttonNumberOf(XButton number) {
    switch (number) {
        case button::left: return 0;
        case button::right: return 1;
        case button::middle: return 2;
        default: return number - (button::back - 3);
    }
}

XButton xButtonOf(std::int64_t buttonNumber) {
    switch (buttonNumber) {
        case 0: return button::left;
        case 1: return button::right;
        case 2: return button::middle;
        default: return static_cast<XButton>(buttonNumber) + button::back - 3;
    }
}

ButtonPath::ButtonPath(const HidState& state, Send send) : state_(state), send_(std::move(send)) {}

bool ButtonPath::letsGo(XButton number) {
    const XButton out = decide(EventType::otherMouseDown, number);
    if (out == number) return true;
    if (out != 0) send_(out, true);
    entries_.push_back({kHeldBack, number, out});
    return false;
}

void ButtonPath::endHeld(XButton number) { release(kHeldBack, number); }

void ButtonPath::press(int device, XButton number) {
    if (button::isWheel(number)) return turnWheel(number);
    const bool isTapped = number != button::left && number != button::right;
    const XButton out = isTapped ? decide(EventType::otherMouseDown, number) : number;
    if (out != 0) send_(out, true);
    entries_.push_back({device, number, out});
}

void ButtonPath::release(int device, XButton number) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [=](const Entry& held) {
        return held.device == device && held.number == number;
    });
    if (entry == entries_.end()) return;
    const XButton out = entry->out;
    entries_.erase(entry);
    const bool isTapped = number != button::left && number != button::right;
    if (isTapped) static_cast<void>(decide(EventType::otherMouseUp, number));
    if (out != 0) send_(out, false);
}

void ButtonPath::releaseDevice(int device) {
    const std::vector<Entry> held = entries_;
    for (const Entry& entry : held) {
        if (entry.device == device) release(device, entry.number);
    }
}

void ButtonPath::turnWheel(XButton number) {
    if (number != button::wheelUp && number != button::wheelDown) return click(number);
    const std::int64_t lines = number == button::wheelUp ? 1 : -1;
    Event event{.type = EventType::scrollWheel,
                .flags = state_.flags(),
                .deltaAxis1 = lines,
                .pointDeltaAxis1 = lines * kPixelsPerLine};
    const EventVerdict verdict = ask(event);
    if (verdict == EventVerdict::swallow) return;
    if (verdict == EventVerdict::pass) return click(number);
    const XButton out = event.deltaAxis1 > 0 ? button::wheelUp : button::wheelDown;
    for (std::int64_t i = 0; i < std::abs(event.deltaAxis1); ++i) click(out);
}

void ButtonPath::click(XButton number) {
    send_(number, true);
    send_(number, false);
}

/// The button that goes out; 0 when swallowed.
XButton ButtonPath::decide(EventType type, XButton number) {
    Event event{.type = type, .flags = state_.flags(), .buttonNumber = buttonNumberOf(number)};
    const EventVerdict verdict = ask(event);
    if (verdict == EventVerdict::swallow) return 0;
    return verdict == EventVerdict::modify ? xButtonOf(event.buttonNumber) : number;
}

EventVerdict ButtonPath::ask(Event& event) const {
    return handler_ ? handler_(event) : EventVerdict::pass;
}

}  // namespace orvel::x11
