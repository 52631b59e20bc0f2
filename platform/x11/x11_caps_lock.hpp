#pragma once

#include "platform/caps_lock.hpp"
#include "platform/x11/input_hub.hpp"

namespace orvel::x11 {

/// The lock of the session's keyboard. The lights of the physical keyboards follow it.
class X11CapsLock final : public CapsLock {
public:
    explicit X11CapsLock(InputHub& hub) : hub_(hub) {}

    [[nodiscard]] CapsLockOutcome set(bool on) override;

private:
    InputHub& hub_;
};

}  // namespace orvel::x11
