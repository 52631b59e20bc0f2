#include "platform/x11/icon_theme.hpp"

#include "platform/x11/glib_holders.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <system_error>

namespace orvel::x11 {

namespace fs = std::filesystem;

namespace {

constexpr auto kEndings = std::to_array<std::string_view>({".png", ".svg", ".xpm"});

struct KeyFileDeleter {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileDeleter>;

KeyFile openKeyFile(const fs::path& path) {
    KeyFile file(g_key_file_new());
    if (g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE)
        return nullptr;
    return file;
}

std::vector<std::string> listOf(GKeyFile* file, const char* group, const char* key) {
    std::string text = given(g_key_file_get_string(file, group, key, nullptr));
    std::vector<std::string> parts;
    for (std::size_t start = 0; start < text.size();) {
        const auto end = std::min(text.find(',', start), text.size());
        if (end > start) parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

int numberOf(GKeyFile* file, const std::string& group, const char* key, int absent) {
    GError* problem = nullptr;
    const int number = g_key_file_get_integer(file, group.c_str(), key, &problem);
    const GErrorHolder error(problem);
    return error == nullptr ? number : absent;
}

/// How far a folder's pictures are from the wanted size; smaller ones count double, since they
/// would be blown up.
int distance(int smallest, int largest, int size) {
    if (size < smallest) return smallest - size;
    return size > largest ? 2 * (size - largest) : 0;
}

std::optional<fs::path> fileIn(const fs::path& folder, std::string_view icon) {
    std::error_code error;
    for (const auto ending : kEndings) {
        auto path = folder / (std::string(icon) + std::string(ending));
        if (fs::is_regular_file(path, error)) return path;
    }
    return std::nullopt;
}

std::vector<fs::path> sessionDataFolders() {
    std::vector<fs::path> folders{fs::path(lent(g_get_user_data_dir()))};
    for (const auto* const* each = g_get_system_data_dirs(); *each != nullptr; ++each)
        folders.emplace_back(*each);
    return folders;
}

std::string sessionTheme() {
    const auto settings =
        openKeyFile(fs::path(lent(g_get_user_config_dir())) / "gtk-3.0" / "settings.ini");
    if (settings != nullptr) {
        auto name = given(
            g_key_file_get_string(settings.get(), "Settings", "gtk-icon-theme-name", nullptr));
        if (!name.empty()) return name;
    }
    constexpr const char* kSchema = "org.gnome.desktop.interface";
    auto* source = g_settings_schema_source_get_default();
    auto* schema =
        source == nullptr ? nullptr : g_settings_schema_source_lookup(source, kSchema, TRUE);
    if (schema == nullptr) return {};
    g_settings_schema_unref(schema);
    const GObjectHolder<GSettings> interface(g_settings_new(kSchema));
    return given(g_settings_get_string(interface.get(), "icon-theme"));
}

}  // namespace

IconTheme::IconTheme(const std::vector<std::string>& themes,
                     const std::vector<fs::path>& dataFolders) {
    for (const auto& name : themes) addTheme(name, dataFolders);
    for (const auto& folder : dataFolders) pixmaps_.push_back(folder / "pixmaps");
}

IconTheme IconTheme::ofSession() {
    return {{sessionTheme(), "hicolor", "Papirus", "Adwaita", "gnome"}, sessionDataFolders()};
}

void IconTheme::addTheme(const std::string& name, const std::vector<fs::path>& dataFolders) {
    const bool isKnown = std::any_of(themes_.begin(), themes_.end(),
                                     [&](const Theme& theme) { return theme.name == name; });
    if (name.empty() || isKnown) return;
    themes_.push_back({name, {}});
    const auto place = themes_.size() - 1;
    std::vector<std::string> inherited;
    for (const auto& data : dataFolders) {
        const auto root = data / "icons" / name;
        const auto index = openKeyFile(root / "index.theme");
        if (index == nullptr) continue;
        for (const auto& folder : listOf(index.get(), "Icon Theme", "Directories")) {
            const int size = numberOf(index.get(), folder, "Size", 48);
            const int scale = numberOf(index.get(), folder, "Scale", 1);
            themes_[place].folders.push_back(
                {root / folder, numberOf(index.get(), folder, "MinSize", size) * scale,
                 numberOf(index.get(), folder, "MaxSize", size) * scale});
        }
        const auto more = listOf(index.get(), "Icon Theme", "Inherits");
        inherited.insert(inherited.end(), more.begin(), more.end());
    }
    for (const auto& parent : inherited) addTheme(parent, dataFolders);
}

std::optional<fs::path> IconTheme::find(std::string_view icon, int size) const {
    if (icon.empty()) return std::nullopt;
    std::error_code error;
    if (icon.front() == '/')
        return fs::is_regular_file(icon, error) ? std::optional(fs::path(icon)) : std::nullopt;
    for (const auto& theme : themes_) {
        auto folders = theme.folders;
        std::stable_sort(folders.begin(), folders.end(), [size](const Folder& a, const Folder& b) {
            return distance(a.smallest, a.largest, size) < distance(b.smallest, b.largest, size);
        });
        for (const auto& folder : folders) {
            if (auto file = fileIn(folder.path, icon)) return file;
        }
    }
    for (const auto& folder : pixmaps_) {
        if (auto file = fileIn(folder, icon)) return file;
        // Old desktop files name the file with its ending.
        if (fs::is_regular_file(folder / icon, error)) return folder / icon;
    }
    return std::nullopt;
}

}  // namespace orvel::x11
