#pragma once

#include "platform/event_tap.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

class MemoryEventTap final : public EventTap {
public:
    MemoryEventTap(World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] bool create(const EventTapRequest& request, EventHandler handler) override;
    void enable() override;
    [[nodiscard]] bool exists() const override { return handler_ != nullptr; }
    [[nodiscard]] bool isEnabled() const override { return isEnabled_; }

    /// One input event arrives: it runs through the handler, and what becomes of it is told.
    void deliver(const Event& event);
    /// The desktop switches the tap off or on; nothing happens without a tap.
    void switchFromOutside(bool on) { isEnabled_ = exists() && on; }

private:
    void logDecision(EventVerdict verdict, const Event& arrived, const Event& left);

    World& world_;
    EffectLog& effects_;
    EventHandler handler_;
    EventMask mask_ = 0;
    bool isEnabled_ = false;
};

}  // namespace orvel::memory
