#include "platform/x11/file_manager_service.hpp"

#include "platform/x11/address_field.hpp"
#include "platform/x11/bus_call.hpp"
#include "platform/x11/folder_finder.hpp"

#include <filesystem>
#include <map>
#include <vector>

namespace orvel::x11 {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFinder = "com.apple.finder";
constexpr const char* kFileManagerName = "org.freedesktop.FileManager1";
constexpr const char* kFileManagerPath = "/org/freedesktop/FileManager1";
/// A menu waits for the answer.
constexpr std::chrono::milliseconds kSearchLimit{700};
/// For a file manager that is asked over the accessibility bus.
constexpr std::chrono::milliseconds kEntryLimit{1500};

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

fs::path desktopFolder() {
    const auto desktop = lent(g_get_user_special_dir(G_USER_DIRECTORY_DESKTOP));
    std::error_code error;
    if (!desktop.empty() && fs::is_directory(desktop, error)) return desktop;
    return lent(g_get_home_dir());
}

/// Folders under which people keep their own.
std::vector<fs::path> searchRoots() {
    std::vector<fs::path> roots{lent(g_get_home_dir())};
    for (int each = G_USER_DIRECTORY_DESKTOP; each < G_USER_N_DIRECTORIES; ++each) {
        const auto path = lent(g_get_user_special_dir(static_cast<GUserDirectory>(each)));
        if (!path.empty()) roots.emplace_back(path);
    }
    for (const auto* each : {"/media", "/run/media", "/mnt", "/tmp", "/"}) roots.emplace_back(each);
    return roots;
}

std::string addressOf(const fs::path& folder) {
    auto uri = toUri(folder.string());
    if (!uri.ends_with('/')) uri += '/';
    return uri;
}

/// Some file managers tell their locations on the bus; which one is in front they do not, so the
/// title decides.
std::string toldLocation(const std::string& title) {
    const auto bus = BusConnection::open(Bus::session);
    if (!bus || !bus.value().hasOwner(kFileManagerName)) return {};
    const auto answer = bus.value().call(
        kFileManagerName, kFileManagerPath, "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", kFileManagerName, "OpenWindowsWithLocations"), kSearchLimit);
    if (!answer) return {};
    GVariant* held = nullptr;
    g_variant_get(answer.value().get(), "(v)", &held);
    const GVariantHolder windows(held);
    if (g_variant_is_of_type(windows.get(), G_VARIANT_TYPE("a{sas}")) == FALSE) return {};
    const auto names = folderNamesIn(title);
    GVariantIter each;
    GVariantIter* locations = nullptr;
    g_variant_iter_init(&each, windows.get());
    std::string found;
    while (g_variant_iter_next(&each, "{&sas}", nullptr, &locations) != FALSE) {
        const char* location = nullptr;
        while (g_variant_iter_next(locations, "&s", &location) != FALSE) {
            const fs::path path = given(g_filename_from_uri(location, nullptr, nullptr));
            for (const auto& name : names) {
                if (path.filename() == name || path == name) found = path.string();
            }
        }
        g_variant_iter_free(locations);
    }
    return found;
}

}  // namespace

Result<std::string> FileManagerService::frontFolder() const {
    const auto front = windows_.frontFileManagerWindow();
    if (!front) return Failure{front.error()};
    if (!front.value()) return addressOf(desktopFolder());
    const auto& window = *front.value();
    if (const auto told = toldLocation(window.title); !told.empty()) return addressOf(told);
    const auto found =
        findShownFolder(window.title, watchedFolders(window.process), searchRoots(), kSearchLimit);
    if (!found) return Failure{"the folder of the window “" + window.title + "” is not known"};
    return addressOf(*found);
}

Result<> FileManagerService::setFrontFolder(const std::string& path) const {
    const auto front = windows_.frontFileManagerWindow();
    if (!front) return Failure{front.error()};
    if (!front.value()) return Failure{"no window is open"};
    const auto& window = *front.value();
    if (!isFolder(path)) return Failure{path + " is no folder"};
    if (enterAddress(focus_, window.process, window.title, path, deadlineIn(kEntryLimit)))
        return {};
    if (!window.application.empty())
        return launcher_.openApplication(window.application, {toUri(path)});
    return showFolder(path);
}

Result<> FileManagerService::showFolder(const std::string& path) const {
    if (!isFolder(path)) return Failure{path + " is no folder"};
    const auto manager = application();
    if (!manager) return Failure{manager.error()};
    return launcher_.openApplication(manager.value().path, {toUri(path)});
}

Result<std::string> FileManagerService::version() const {
    const auto manager = application();
    if (!manager) return Failure{manager.error()};
    return manager.value().name;
}

Result<DesktopEntry> FileManagerService::application() const {
    const auto index = entries_.index();
    const auto* entry =
        table_.resolve(*index, kFinder, DesktopEntries::defaultFor("inode/directory"));
    if (entry == nullptr) return Failure{"no file manager is installed"};
    return *entry;
}

}  // namespace orvel::x11
