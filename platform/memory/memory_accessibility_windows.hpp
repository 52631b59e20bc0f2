#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

/// The windows of the world that have an accessibility side, in the order of the world.
class MemoryAccessibilityWindows final : public AccessibilityWindows {
public:
    MemoryAccessibilityWindows(World& world, EffectLog& effects)
        : world_(world), effects_(effects) {}

    void setBudget(std::optional<std::chrono::milliseconds>) override {}
    [[nodiscard]] std::optional<AxWindow> focusedWindow(ProcessId pid) const override;
    [[nodiscard]] std::optional<std::vector<AxWindow>> windows(ProcessId pid) const override;
    [[nodiscard]] AxWindowAttributes attributes(const AxWindow& window) const override;
    bool setPosition(const AxWindow& window, AxPoint position) override;
    bool setSize(const AxWindow& window, Size size) override;
    bool setMinimized(const AxWindow& window, bool minimized) override;
    bool raise(const AxWindow& window) override;
    bool setMain(const AxWindow& window, bool isMain) override;
    bool setFocused(const AxWindow& window, bool isFocused) override;

private:
    [[nodiscard]] WorldWindow* reach(const AxWindow& window) const;
    void writeFlag(const AxWindow& window, std::string_view attribute, bool value);

    World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
