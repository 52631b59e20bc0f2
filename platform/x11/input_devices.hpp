#pragma once

#include "platform/x11/x11_session.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// A physical device that is attached to the session's keyboard or pointer.
struct InputDevice {
    int id = 0;
    std::string name;
    bool isEnabled = false;
    bool hasKeys = false;
    bool scrolls = false;  ///< has a scroll axis
    int buttonCount = 0;
    bool isFloating = false;  ///< grabbed, or taken out of the session
    std::vector<std::string> properties = {};
};

/// The two master devices of the session and the two synthetic ones.
struct MasterDevices {
    int pointer = 0;
    int keyboard = 0;
    int syntheticPointer = 0;
    int syntheticKeyboard = 0;
};

[[nodiscard]] MasterDevices findMasters(X11Session& session);
/// The physical devices of these masters, and floating ones.
[[nodiscard]] std::vector<InputDevice> listDevices(X11Session& session,
                                                   const MasterDevices& masters);
/// Absent when the device is gone meanwhile.
[[nodiscard]] std::optional<InputDevice> readDevice(X11Session& session, int id);
/// Keycodes that are down on the device.
[[nodiscard]] std::vector<unsigned char> heldKeys(X11Session& session, int id);

[[nodiscard]] std::vector<int> heldButtons(X11Session& session, int id);

}  // namespace orvel::x11
