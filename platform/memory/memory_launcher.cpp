#include "platform/memory/memory_launcher.hpp"

namespace orvel::memory {

void MemoryLauncher::openApplication(std::string_view path, std::optional<bool> activates) {
    auto effect = effects_.effect("openApp");
    effect->beginObject().member("path", path);
    if (activates) effect->member("activates", *activates);
    effect->endObject();
}

void MemoryLauncher::openApplicationNamed(std::string_view name) {
    effects_.effect("openApp")->beginObject().member("name", name).endObject();
}

void MemoryLauncher::openFiles(const std::vector<std::string>& paths,
                               std::string_view applicationPath, bool activates,
                               OpenCompletion completion) {
    {
        auto effect = effects_.effect("openFiles");
        effect->beginObject().key("paths").beginArray();
        for (const std::string& path : paths) effect->value(path);
        effect->endArray()
            .member("appPath", applicationPath)
            .member("activates", activates)
            .endObject();
    }
    if (!completion) return;
    runLoop_.post([outcome = outcomeOf(paths, applicationPath), told = std::move(completion)] {
        told(outcome);
    });
}

void MemoryLauncher::revealInFileManager(std::string_view root) {
    effects_.effect("revealInFinder")->beginObject().member("root", root).endObject();
}

Result<> MemoryLauncher::outcomeOf(const std::vector<std::string>& paths,
                                   std::string_view applicationPath) const {
    std::vector<std::string> opened = paths;
    opened.emplace_back(applicationPath);
    for (const std::string& path : opened) {
        const CannedOutcome* outcome = World::outcomeFor(world_.launchErrors, path);
        if (outcome != nullptr) return Failure{outcome->error.value_or("")};
    }
    return {};
}

}  // namespace orvel::memory
