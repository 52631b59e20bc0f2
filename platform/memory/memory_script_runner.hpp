#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/script_runner.hpp"

namespace orvel::memory {

/// Scripts are told and end as the world says.
class MemoryScriptRunner final : public ScriptRunner {
public:
    MemoryScriptRunner(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    Result<std::string> run(std::string_view source) override;

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
