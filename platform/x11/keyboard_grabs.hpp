#pragma once

#include "platform/x11/input_hub.hpp"

#include <set>

struct _XDisplay;

namespace orvel::x11 {

/// The physical keyboards that are taken out of the session, and their lights and layout, which
/// the server does not keep in step with the session's while they are.
class KeyboardGrabs {
public:
    explicit KeyboardGrabs(InputHub& hub) : hub_(hub) {}

    /// False when another client holds the keyboard. One that is gone is no failure.
    [[nodiscard]] bool take(int device);
    [[nodiscard]] bool holds(int device) const { return devices_.contains(device); }
    [[nodiscard]] const std::set<int>& devices() const { return devices_; }
    /// The device is gone: its keys come up.
    void drop(int device);
    /// All keys come up and the keyboards are back in the session, Caps Lock as it was set.
    void giveAllBack();

    /// Brings the locks and the layout of all taken keyboards in line with the session's.
    void synchronise();
    /// After Caps Lock went down or came up: gives the session the lock that the handler knows or
    /// has set.
    void settleCapsLock();

private:
    struct Locks {
        unsigned modifiers = 0;
        unsigned group = 0;
    };
    [[nodiscard]] Locks sessionLocks() const;
    void apply(int device, Locks locks);

    InputHub& hub_;
    std::set<int> devices_;
};

}  // namespace orvel::x11
