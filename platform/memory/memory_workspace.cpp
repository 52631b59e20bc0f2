#include "platform/memory/memory_workspace.hpp"

#include <algorithm>

namespace orvel::memory {

namespace {

constexpr ProcessId kNoProcess = -1;

}  // namespace

std::optional<FrontmostApplication> MemoryWorkspace::frontmostApplication() const {
    if (!world_.frontmost) return std::nullopt;
    for (const RunningApplication& app : world_.apps) {
        if (!app.isTerminated && app.bundleId == world_.frontmost) {
            return FrontmostApplication{app.pid, app.bundleId};
        }
    }
    return FrontmostApplication{kNoProcess, world_.frontmost};
}

std::vector<RunningApplication> MemoryWorkspace::runningApplications() const { return world_.apps; }

std::optional<std::string> MemoryWorkspace::applicationPath(std::string_view bundleId) const {
    for (const InstalledApplication& app : world_.installed) {
        if (app.bundleId == bundleId && app.path) return app.path;
    }
    for (const RunningApplication& app : world_.apps) {
        if (!app.isTerminated && app.bundleId == bundleId && app.path) return app.path;
    }
    return std::nullopt;
}

std::string MemoryWorkspace::displayName(std::string_view path) const {
    constexpr std::string_view ending = ".app";
    std::string name(path.substr(path.rfind('/') + 1));
    const auto isThere = [path](const auto& app) { return app.path == path; };
    const auto& [installed, apps] = std::tie(world_.installed, world_.apps);
    const auto known = std::find_if(installed.begin(), installed.end(), isThere);
    const auto running = std::find_if(apps.begin(), apps.end(), [&](const auto& app) {
        return !app.isTerminated && isThere(app);
    });
    if (known != installed.end()) {
        name = known->name;
    } else if (running != apps.end()) {
        name = running->name;
    }
    if (name.ends_with(ending)) name.resize(name.size() - ending.size());
    return name;
}

Picture MemoryWorkspace::icon(std::string_view) const { return {}; }

void MemoryWorkspace::activate(ProcessId pid, int options) {
    effects_.effect("activateApp")
        ->beginObject()
        .member("pid", pid)
        .member("options", options)
        .endObject();
}

void MemoryWorkspace::terminate(ProcessId pid) {
    effects_.effect("terminateApp")->beginObject().member("pid", pid).endObject();
}

}  // namespace orvel::memory
