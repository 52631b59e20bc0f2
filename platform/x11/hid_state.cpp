#include "platform/x11/hid_state.hpp"

#include <algorithm>

namespace orvel::x11 {

bool HidState::press(DeviceKey key, KeyCode code) {
    if (isDown(key)) return false;
    held_.push_back({key, code});
    return true;
}

bool HidState::release(DeviceKey key) {
    return std::erase_if(held_, [key](const Held& held) { return held.key == key; }) != 0;
}

EventFlags HidState::flags() const {
    EventFlags flags = capsLock_ ? flag::capsLock : flag::none;
    for (const Held& held : held_) flags |= flagOfKey(held.code);
    return flags;
}

bool HidState::isDown(KeyCode code) const {
    return std::any_of(held_.begin(), held_.end(),
                       [code](const Held& held) { return held.code == code; });
}

bool HidState::isDown(DeviceKey key) const {
    return std::any_of(held_.begin(), held_.end(),
                       [key](const Held& held) { return held.key == key; });
}

std::vector<DeviceKey> HidState::keysOf(int device) const {
    std::vector<DeviceKey> keys;
    for (const Held& held : held_) {
        if (held.key.device == device) keys.push_back(held.key);
    }
    return keys;
}

}  // namespace orvel::x11
