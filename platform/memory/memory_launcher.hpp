#pragma once

#include "platform/launcher.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/run_loop.hpp"

namespace orvel::memory {

/// Openings are told and change nothing.
class MemoryLauncher final : public Launcher {
public:
    MemoryLauncher(const World& world, EffectLog& effects, RunLoop& runLoop)
        : world_(world), effects_(effects), runLoop_(runLoop) {}

    void openApplication(std::string_view path, std::optional<bool> activates) override;
    void openApplicationNamed(std::string_view name) override;
    void openFiles(const std::vector<std::string>& paths, std::string_view applicationPath,
                   bool activates, OpenCompletion completion) override;
    void openUrl(std::string_view url) override { effects_.effect("openURL")->value(url); }
    void revealInFileManager(std::string_view root) override;

private:
    [[nodiscard]] Result<> outcomeOf(const std::vector<std::string>& paths,
                                     std::string_view applicationPath) const;

    const World& world_;
    EffectLog& effects_;
    RunLoop& runLoop_;
};

}  // namespace orvel::memory
