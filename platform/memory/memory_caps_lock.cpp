#include "platform/memory/memory_caps_lock.hpp"

namespace orvel::memory {

CapsLockOutcome MemoryCapsLock::set(bool on) {
    if (world_.hidService == HidService::missing) return CapsLockOutcome::noService;
    if (world_.hidService == HidService::closed) return CapsLockOutcome::notOpened;
    effects_.effect("capsLock")->value(on);
    return CapsLockOutcome::done;
}

}  // namespace orvel::memory
