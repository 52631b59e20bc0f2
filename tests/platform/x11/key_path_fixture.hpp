#pragma once

#include "platform/x11/key_path.hpp"
#include "tests/platform/x11/pc_keyboard.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace orvel::x11::test {

/// One key of the synthetic device going down or up.
struct Sent {
    XKeycode key;
    bool down;
    bool operator==(const Sent&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Sent& sent) {
        return out << (sent.down ? "down " : "up ") << int{sent.key};
    }
};
inline Sent down(XKeycode key) { return {key, true}; }
inline Sent up(XKeycode key) { return {key, false}; }

inline constexpr int kFirstKeyboard = 6;
inline constexpr int kSecondKeyboard = 8;

/// A keyboard in front, the synthetic device behind, and a handler in between.
class KeyPathTest : public testing::Test {
protected:
    void press(XKeycode key, int device = kFirstKeyboard) {
        path.handle({.key = {device, key}, .down = true});
    }
    void repeat(XKeycode key, int device = kFirstKeyboard) {
        path.handle({.key = {device, key}, .down = true, .isRepeat = true});
    }
    void release(XKeycode key, int device = kFirstKeyboard) { path.handle({.key = {device, key}}); }

    /// What went out since the last call.
    std::vector<Sent> taken() { return std::exchange(sent, {}); }

    /// Makes the handler rewrite presses of `from` to `to` with these flags.
    void rewrite(KeyCode from, KeyCode to, EventFlags flags) {
        path.setHandler([=](Event& event) {
            if (event.keyCode != from) return EventVerdict::pass;
            event.keyCode = to;
            event.flags = flags;
            return EventVerdict::modify;
        });
    }
    void swallow(KeyCode code) {
        path.setHandler([=](Event& event) {
            return event.keyCode == code ? EventVerdict::swallow : EventVerdict::pass;
        });
    }

    KeyMap map{pcKeys()};
    std::vector<Sent> sent;
    HidState state;
    OutputLedger ledger{map, [this](XKeycode key, bool isDown) { sent.push_back({key, isDown}); }};
    KeyPath path{map, state, ledger};
};

}  // namespace orvel::x11::test
