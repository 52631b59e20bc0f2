#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// Finds the files of icons that desktop files name, by the rules of the icon theme standard.
class IconTheme {
public:
    /// `themes`: names in order of preference; what they inherit is added. `dataFolders`: folders
    /// that hold `icons/` and `pixmaps/`.
    IconTheme(const std::vector<std::string>& themes,
              const std::vector<std::filesystem::path>& dataFolders);

    /// The user's theme on this desktop.
    [[nodiscard]] static IconTheme ofSession();

    /// The file whose picture is nearest to `size` pixels; absent when no theme has the icon. An
    /// absolute path names itself.
    [[nodiscard]] std::optional<std::filesystem::path> find(std::string_view icon, int size) const;

private:
    struct Folder {
        std::filesystem::path path;
        int smallest = 0;
        int largest = 0;
    };
    struct Theme {
        std::string name;
        std::vector<Folder> folders;
    };

    void addTheme(const std::string& name, const std::vector<std::filesystem::path>& dataFolders);

    std::vector<Theme> themes_;
    std::vector<std::filesystem::path> pixmaps_;
};

}  // namespace orvel::x11
