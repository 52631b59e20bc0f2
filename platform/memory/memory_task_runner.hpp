#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/task_runner.hpp"

namespace orvel::memory {

/// Child processes are told and end as the world says.
class MemoryTaskRunner final : public TaskRunner {
public:
    MemoryTaskRunner(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    Result<std::string> run(std::string_view path,
                            const std::vector<std::string>& arguments) override;
    Result<> launch(std::string_view path, const std::vector<std::string>& arguments) override;

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
