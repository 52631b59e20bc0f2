#include "platform/x11/dock_service.hpp"

#include "platform/x11/bus_call.hpp"
#include "platform/x11/panel_settings.hpp"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace orvel::x11 {

namespace fs = std::filesystem;

namespace {

const PanelProgram* programNamed(const std::string& name) {
    const auto programs = panelPrograms();
    const auto found = std::find_if(programs.begin(), programs.end(),
                                    [&](const PanelProgram& each) { return each.name == name; });
    return found == programs.end() ? nullptr : &*found;
}

}  // namespace

fs::path DockService::sessionMemory() {
    return fs::path(lent(g_get_user_state_dir())) / "orvel" / "hidden-panels";
}

Result<> DockService::setHidden(bool isHidden) {
    const std::lock_guard lock(oneAtATime_);
    return isHidden ? hide() : restore();
}

Result<> DockService::hide() {
    const auto bus = BusConnection::open(Bus::session);
    if (!bus) return Failure{"cannot reach the panel: " + bus.error()};
    auto changed = remembered();
    std::vector<std::pair<const PanelProgram*, std::string>> toHide;
    for (const auto& program : panelPrograms()) {
        if (!program.isRunning(bus.value())) continue;
        for (auto& setting : program.read(bus.value())) {
            if (setting.before == program.hidden) continue;
            toHide.emplace_back(&program, setting.key);
            changed.push_back(std::move(setting));
        }
    }
    // What will be undone is on disk before anything changes.
    if (auto kept = remember(changed); !kept) return kept;
    for (const auto& [program, key] : toHide) {
        if (!program->write(bus.value(), key, std::string(program->hidden)))
            return Failure{std::string(program->name) + " does not take its new setting"};
    }
    return {};
}

Result<> DockService::restore() {
    const auto changed = remembered();
    if (changed.empty()) return {};
    const auto bus = BusConnection::open(Bus::session);
    if (!bus) return Failure{"cannot reach the panel: " + bus.error()};
    for (const auto& setting : changed) {
        const auto* program = programNamed(setting.panel);
        if (program != nullptr && !program->write(bus.value(), setting.key, setting.before))
            return Failure{setting.panel + " does not take its old setting back"};
    }
    std::error_code error;
    fs::remove(memory_, error);
    if (error) return Failure{memory_.string() + ": " + error.message()};
    return {};
}

std::vector<HiddenPanelSetting> DockService::remembered() const {
    std::ifstream file(memory_);
    std::vector<HiddenPanelSetting> settings;
    HiddenPanelSetting setting;
    while (std::getline(file, setting.panel, '\t') && std::getline(file, setting.key, '\t') &&
           std::getline(file, setting.before))
        settings.push_back(setting);
    return settings;
}

Result<> DockService::remember(const std::vector<HiddenPanelSetting>& settings) const {
    std::error_code error;
    fs::create_directories(memory_.parent_path(), error);
    const auto fresh = memory_.string() + ".new";
    {
        std::ofstream file(fresh, std::ios::trunc);
        for (const auto& setting : settings)
            file << setting.panel << '\t' << setting.key << '\t' << setting.before << '\n';
        if (!file.flush()) return Failure{fresh + ": cannot be written"};
    }
    fs::rename(fresh, memory_, error);
    if (error) return Failure{memory_.string() + ": " + error.message()};
    return {};
}

ServiceCheck DockService::check() {
    const auto bus = BusConnection::open(Bus::session);
    std::string names;
    for (const auto& program : panelPrograms()) {
        if (bus && program.isRunning(bus.value()))
            names += (names.empty() ? "" : ", ") + std::string(program.name);
    }
    if (!names.empty()) return {"panel", true, false, names, {}};
    return {"panel", false, false,
            "no panel runs whose auto-hide is known: the taskbar does not hide the desktop's own",
            "use xfce4-panel, plasmashell, mate-panel or plank, or hide your panel yourself"};
}

}  // namespace orvel::x11
