#pragma once

#include "platform/event_poster.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

/// Posted events are told and go nowhere.
class MemoryEventPoster final : public EventPoster {
public:
    MemoryEventPoster(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    bool postKeys(EventSourceState source, std::span<const PostedKey> keys) override;
    bool postMediaKeys(std::span<const PostedMediaKey> keys) override;

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
