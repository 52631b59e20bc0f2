#pragma once

#include "platform/accessibility_permission.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

class MemoryAccessibilityPermission final : public AccessibilityPermission {
public:
    MemoryAccessibilityPermission(const World& world, EffectLog& effects)
        : world_(world), effects_(effects) {}

    [[nodiscard]] bool isTrusted() const override { return world_.isTrusted; }
    [[nodiscard]] bool isTrustedOrPrompt() override;

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
