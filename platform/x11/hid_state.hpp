#pragma once

#include "platform/x11/key_map.hpp"

#include <compare>
#include <vector>

namespace orvel::x11 {

/// One key of one device.
struct DeviceKey {
    int device = 0;
    XKeycode keycode = 0;
    auto operator<=>(const DeviceKey&) const = default;
};

/// The keys that are physically held, on all keyboards together, in the order of their presses.
class HidState {
public:
    /// False when the key was held already.
    bool press(DeviceKey key, KeyCode code);
    /// False when the key was not held.
    bool release(DeviceKey key);

    /// Modifier flags of all held keys, Caps Lock included.
    [[nodiscard]] EventFlags flags() const;
    [[nodiscard]] bool isDown(KeyCode code) const;
    [[nodiscard]] bool isDown(DeviceKey key) const;
    /// The held keys of a device, first press first.
    [[nodiscard]] std::vector<DeviceKey> keysOf(int device) const;
    [[nodiscard]] bool isEmpty() const { return held_.empty(); }

    [[nodiscard]] bool capsLock() const { return capsLock_; }
    void setCapsLock(bool on) { capsLock_ = on; }

private:
    struct Held {
        DeviceKey key;
        KeyCode code = 0;
    };
    std::vector<Held> held_;
    bool capsLock_ = false;
};

}  // namespace orvel::x11
