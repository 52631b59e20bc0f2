#pragma once

#include "platform/haptics.hpp"
#include "platform/memory/effect_log.hpp"

namespace orvel::memory {

class MemoryHaptics final : public Haptics {
public:
    explicit MemoryHaptics(EffectLog& effects) : effects_(effects) {}

    void tap() override { effects_.effect("haptic")->value(true); }

private:
    EffectLog& effects_;
};

}  // namespace orvel::memory
