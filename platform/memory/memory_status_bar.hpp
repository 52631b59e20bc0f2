#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/status_bar.hpp"

namespace orvel::memory {

class MemoryStatusBar final : public StatusBar {
public:
    MemoryStatusBar(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    void createItem(const StatusItemSpec& spec,
                    std::function<void(const StatusItemClick&)> clicked) override;
    [[nodiscard]] std::optional<ScreenRect> buttonFrame() const override;
    void showPaused(bool) override {}

    /// A person clicks the item; nothing happens before it exists.
    void click(const StatusItemClick& click) const;

private:
    const World& world_;
    EffectLog& effects_;
    std::function<void(const StatusItemClick&)> clicked_;
};

}  // namespace orvel::memory
