#pragma once

namespace orvel {

enum class CapsLockOutcome {
    done,
    noService,  ///< the input system offers no such service
    notOpened,  ///< the service is there and cannot be opened
};

/// The lock and its light, as the input system keeps them. Main thread.
class CapsLock {
public:
    virtual ~CapsLock() = default;

    [[nodiscard]] virtual CapsLockOutcome set(bool on) = 0;
};

}  // namespace orvel
