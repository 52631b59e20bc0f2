#include "platform/x11/application_groups.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string_view>
#include <system_error>

namespace orvel::x11 {

namespace {

/// What tells windows of one application from those of another.
std::string groupKey(const ClientWindow& window, const DesktopEntry* entry) {
    if (entry != nullptr) return "entry " + entry->id;
    // The class first: one program may be many applications, as interpreters are.
    if (!window.identity.className.empty()) return "class " + window.identity.className;
    if (!window.identity.executable.empty()) return "program " + window.identity.executable;
    if (window.process != 0) return "process " + std::to_string(window.process);
    return "window " + std::to_string(window.id);
}

ApplicationGroup described(const ClientWindow& window, const DesktopEntry* entry,
                           const ApplicationTable& table) {
    ApplicationGroup group;
    group.process = window.process;
    if (entry != nullptr) {
        group.bundleId = entry->id;
        group.frontmostId = table.macIdentifier(*entry).value_or(entry->id);
        group.name = entry->name;
        group.path = entry->path;
        group.icon = entry->icon;
        group.kind = kindOf(*entry);
        return group;
    }
    const auto& identity = window.identity;
    group.bundleId = identity.className.empty() ? identity.executable : lowered(identity.className);
    group.frontmostId = group.bundleId;
    group.name = identity.className.empty() ? identity.executable : identity.className;
    group.kind = kindOf(identity);
    return group;
}

bool isSeenByPeople(const ClientWindow& window) {
    const bool isApplicationWindow = window.kind == WindowKind::normal ||
                                     window.kind == WindowKind::dialog ||
                                     window.kind == WindowKind::utility;
    return isApplicationWindow && !window.skipsTaskbar;
}

/// Gives each group a number of its own that no other group has.
void assignHandles(std::vector<ApplicationGroup>& groups) {
    std::set<ProcessId> taken;
    for (auto& group : groups) {
        const bool isFree = group.process > 0 && taken.insert(group.process).second;
        // Window ids fit: the server keeps the upper three bits free.
        group.handle = isFree ? group.process : -static_cast<ProcessId>(group.windows.front());
    }
}

std::vector<std::string> commandLine(ProcessId process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string argument; arguments.size() < 3 && std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

bool isInterpreter(std::string_view program) {
    constexpr auto kInterpreters = std::to_array<std::string_view>(
        {"python", "perl", "ruby", "bash", "dash", "sh", "java", "node", "gjs", "mono", "wine"});
    return std::any_of(
        kInterpreters.begin(), kInterpreters.end(), [program](std::string_view each) {
            // Versions follow the name: python3.11, perl5.36.
            return program.starts_with(each) &&
                   program.find_first_not_of("0123456789.-", each.size()) == std::string_view::npos;
        });
}

}  // namespace

bool ApplicationGroup::owns(std::uint32_t window) const {
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

std::vector<ApplicationGroup> groupWindows(const std::vector<ClientWindow>& oldestFirst,
                                           const ApplicationIndex& index,
                                           const ApplicationTable& table) {
    std::vector<ApplicationGroup> groups;
    std::map<std::string, std::size_t> places;
    for (const auto& window : oldestFirst) {
        const auto* entry = index.owning(window.identity);
        const auto [place, isNew] = places.try_emplace(groupKey(window, entry), groups.size());
        if (isNew) groups.push_back(described(window, entry, table));
        auto& group = groups[place->second];
        group.windows.push_back(window.id);
        group.isRegular = group.isRegular || isSeenByPeople(window);
    }
    assignHandles(groups);
    return groups;
}

std::string programPath(ProcessId process) {
    if (process <= 0) return {};
    std::error_code error;
    auto path =
        std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error).string();
    constexpr std::string_view kReplaced = " (deleted)";
    if (path.ends_with(kReplaced)) path.resize(path.size() - kReplaced.size());
    return path;
}

std::string programName(ProcessId process) {
    auto program = std::filesystem::path(programPath(process)).filename().string();
    if (!isInterpreter(program)) return program;
    const auto arguments = commandLine(process);
    for (std::size_t each = 1; each < arguments.size(); ++each) {
        if (!arguments[each].empty() && arguments[each].front() != '-')
            return std::filesystem::path(arguments[each]).filename().string();
    }
    return program;
}

}  // namespace orvel::x11
