#pragma once

#include "platform/caps_lock.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

class MemoryCapsLock final : public CapsLock {
public:
    MemoryCapsLock(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] CapsLockOutcome set(bool on) override;

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
