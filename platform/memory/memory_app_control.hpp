#pragma once

#include "platform/app_control.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

/// No desktop gives a process this number, so that it is never one of the other instances.
inline constexpr ProcessId kOwnPid = 99999;

class MemoryAppControl final : public AppControl {
public:
    MemoryAppControl(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] ProcessId ownPid() const override { return kOwnPid; }
    [[nodiscard]] std::vector<ProcessId> runningInstances() const override;
    void activateSelf() override { effects_.effect("activateSelf")->value(true); }
    void closeStrayWindows() override {}
    void terminate() override { effects_.effect("terminate")->value(true); }

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
