#pragma once

#include "tools/rig/modifiers.hpp"
#include "tools/rig/physical_key.hpp"
#include "tools/rig/x_connection.hpp"

#include <vector>

namespace orvel::rig {

struct ScreenPoint {
    int x = 0;
    int y = 0;
    bool operator==(const ScreenPoint&) const = default;
};

/// What the server believes to be held, locked and where, at the moment of asking.
class ScreenState {
public:
    explicit ScreenState(XConnection& x) : x_(x) {}

    /// Keys down for applications, in ascending order of their codes.
    std::vector<PhysicalKey> keysDown() const;
    /// Keys down on one device, such as "kbd0".
    std::vector<PhysicalKey> keysDownOn(const std::string& device) const;
    /// Keys down on the device that synthetic events come from.
    std::vector<PhysicalKey> syntheticKeysDown() const;
    /// Buttons 1 to 5 down for applications.
    std::vector<int> buttonsDown() const;

    /// Modifier bits in force (kShift, kControl, …), locked ones included.
    unsigned modifiers() const;
    bool capsLock() const;
    bool numLock() const;
    /// The layout in force, from 0.
    int layoutGroup() const;
    void lockLayoutGroup(int group);

    /// Releases every key and lock that is still on for applications.
    void releaseEverything();

    ScreenPoint pointer() const;
    /// Puts the pointer there without any device having moved.
    void warpPointer(ScreenPoint to);

    /// The window that owns the clipboard, 0 for none.
    WindowId clipboardOwner() const;

    /// Milliseconds since the last input, as screen savers count them.
    unsigned long idleMs() const;

private:
    XConnection& x_;
};

}  // namespace orvel::rig
