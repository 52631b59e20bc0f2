#include "platform/x11/open_service.hpp"

#include "platform/x11/bus_call.hpp"

#include <filesystem>

namespace orvel::x11 {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSettingsScheme = "x-apple.systempreferences:";
constexpr std::string_view kSettings = "com.apple.systempreferences";
constexpr std::string_view kOverview = "Mission Control";

std::vector<std::string> toUris(const std::vector<std::string>& items) {
    std::vector<std::string> uris;
    for (const auto& item : items) uris.push_back(toUri(item));
    return uris;
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return path.starts_with('/') && fs::is_directory(path, error);
}

/// Desktops that have an overview of all windows built in show it when they are told.
bool showBuiltInOverview() {
    const auto bus = BusConnection::open(Bus::session);
    if (!bus) return false;
    if (bus.value().hasOwner("org.gnome.Shell"))
        return bus.value()
            .call("org.gnome.Shell", "/org/gnome/Shell", "org.freedesktop.DBus.Properties", "Set",
                  g_variant_new("(ssv)", "org.gnome.Shell", "OverviewActive",
                                g_variant_new_boolean(TRUE)))
            .ok();
    if (bus.value().hasOwner("org.kde.kglobalaccel"))
        return bus.value()
            .call("org.kde.kglobalaccel", "/component/kwin", "org.kde.kglobalaccel.Component",
                  "invokeShortcut", g_variant_new("(s)", "Overview"))
            .ok();
    return false;
}

}  // namespace

Result<> OpenService::openApplication(const std::string& path,
                                      const std::vector<std::string>& items, bool activates) const {
    const auto index = entries_.index();
    if (const auto* entry = index->byPath(path)) return openEntry(*entry, items, activates);
    return launcher_.openApplication(path, toUris(items));
}

Result<> OpenService::openEntry(const DesktopEntry& entry, const std::vector<std::string>& items,
                                bool activates) const {
    if (items.empty() && activates) {
        const auto isActivated = windows_.activateApplication(entry.id);
        if (isActivated && isActivated.value()) return {};
    }
    // A terminal takes no folder as its argument; it begins where it is started.
    if (kindOf(entry) == ApplicationKind::terminal && items.size() == 1 && isFolder(items.front()))
        return launcher_.openApplicationIn(entry.path, items.front());
    return launcher_.openApplication(entry.path, toUris(items));
}

Result<> OpenService::openNamed(const std::string& name,
                                const std::vector<std::string>& items) const {
    if (name == kOverview && showBuiltInOverview()) return {};
    const auto index = entries_.index();
    const auto* entry = table_.resolveName(*index, name, preferredFileManager());
    if (entry == nullptr) return Failure{"Unable to find application named '" + name + "'"};
    return openEntry(*entry, items, true);
}

Result<> OpenService::openItem(const std::string& item) const {
    if (item.starts_with(kSettingsScheme)) return openNamed(std::string(kSettings), {});
    std::error_code error;
    if (item.starts_with('/') && !fs::exists(item, error))
        return Failure{"The file " + item + " does not exist."};
    return launcher_.openUri(toUri(item));
}

Result<> OpenService::reveal(const std::string& folder) const {
    return fileManager_.showFolder(folder);
}

Result<> OpenService::run(const OpenCommand& command) const {
    if (command.isReveal) return reveal(fs::path(command.items.front()).parent_path().string());
    if (!command.applicationId.empty()) return openNamed(command.applicationId, command.items);
    if (!command.applicationName.empty()) return openNamed(command.applicationName, command.items);
    for (const auto& item : command.items) {
        if (auto opened = openItem(item); !opened) return opened;
    }
    return {};
}

std::string OpenService::preferredFileManager() const {
    return DesktopEntries::defaultFor("inode/directory");
}

}  // namespace orvel::x11
