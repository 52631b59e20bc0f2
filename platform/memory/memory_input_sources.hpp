#pragma once

#include "platform/input_sources.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

class MemoryInputSources final : public InputSources {
public:
    MemoryInputSources(World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] std::optional<InputSource> current() const override;
    [[nodiscard]] std::vector<InputSource> selectable() const override;
    void select(std::string_view id) override;

private:
    [[nodiscard]] const WorldInputSource* find(std::string_view id) const;

    World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
