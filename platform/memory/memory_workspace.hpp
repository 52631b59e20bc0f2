#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/workspace.hpp"

namespace orvel::memory {

class MemoryWorkspace final : public Workspace {
public:
    MemoryWorkspace(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication() const override;
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<std::string> applicationPath(
        std::string_view bundleId) const override;
    [[nodiscard]] std::string displayName(std::string_view path) const override;
    [[nodiscard]] Picture icon(std::string_view path) const override;
    void activate(ProcessId pid, int options) override;
    void terminate(ProcessId pid) override;

private:
    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
