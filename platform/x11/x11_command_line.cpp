#include "platform/command_line.hpp"
#include "platform/x11/running_sessions.hpp"
#include "platform/x11/x11_file_system.hpp"
#include "platform/x11/x11_preference_store.hpp"

#include <utility>

namespace orvel {

namespace {

std::vector<RunningEngine> residents() {
    std::vector<RunningEngine> engines;
    for (const x11::RunningSession& session : x11::runningSessions()) {
        engines.push_back({"display " + session.display, session.isOn, session.isPaused});
    }
    return engines;
}

}  // namespace

CommandLine makeCommandLine(std::function<void(std::string_view)> report) {
    auto store = std::make_shared<x11::X11PreferenceStore>(
        x11::preferencesPath(), std::move(report), x11::X11PreferenceStore::Failures::returnOnly);
    const auto check = [store]() -> Result<> {
        // A damaged file is kept aside now, so that a command that only reads says so, too.
        if (const Result<> settled = store->flush(); !settled) return settled;
        if (!store->problem().empty()) return Failure{store->problem()};
        return {};
    };
    const auto apply = [store](const PreferenceChanges& changes) {
        store->apply(changes);
        return store->flush();
    };
    return {store, std::make_shared<x11::X11FileSystem>(), check, apply, residents};
}

}  // namespace orvel
