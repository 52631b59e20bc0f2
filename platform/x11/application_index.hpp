#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvel::x11 {

/// One installed application as its desktop file describes it.
struct DesktopEntry {
    std::string id;    ///< with its ending: "org.xfce.mousepad.desktop"
    std::string path;  ///< of the desktop file
    std::string name;  ///< in the user's language
    std::string startupWmClass;
    std::string executable;  ///< last component, as the command line names it
    std::string icon;        ///< a theme's name or an absolute path
    std::vector<std::string> categories;
    bool isShown = true;

    [[nodiscard]] bool hasCategory(std::string_view category) const;
    bool operator==(const DesktopEntry&) const = default;
};

/// What a window tells about the application it belongs to; unknown members are empty.
struct WindowIdentity {
    std::string desktopFile;  ///< named by the window itself, without ".desktop"
    std::string instance;     ///< first part of WM_CLASS
    std::string className;    ///< second part of WM_CLASS
    std::string executable;   ///< last component of the process's program
    bool operator==(const WindowIdentity&) const = default;
};

/// The installed applications, found by whatever names them.
class ApplicationIndex {
public:
    ApplicationIndex() = default;
    explicit ApplicationIndex(std::vector<DesktopEntry> entries);

    [[nodiscard]] const std::vector<DesktopEntry>& entries() const { return entries_; }
    /// With or without the ending ".desktop".
    [[nodiscard]] const DesktopEntry* byId(std::string_view id) const;
    /// A desktop file, or `/Applications/NAME.app`, the name that such a folder has for it.
    [[nodiscard]] const DesktopEntry* byPath(std::string_view path) const;
    /// The name shown to people, else the program's; letter case does not matter.
    [[nodiscard]] const DesktopEntry* byName(std::string_view name) const;
    /// The application that a window belongs to.
    [[nodiscard]] const DesktopEntry* owning(const WindowIdentity& window) const;
    /// What a folder of applications holds: "NAME.app" for each one shown, in order of the names,
    /// each name once.
    [[nodiscard]] std::vector<std::string> folderNames() const;

private:
    using Lookup = std::unordered_map<std::string, std::size_t>;

    [[nodiscard]] const DesktopEntry* find(const Lookup& lookup, std::string_view key) const;
    /// An application that people see wins over a hidden one of the same key.
    void add(Lookup& lookup, std::string key, std::size_t entry);

    std::vector<DesktopEntry> entries_;
    Lookup byId_;
    Lookup byPath_;
    Lookup byName_;
    Lookup byWmClass_;
    Lookup byLastPart_;
    Lookup byExecutable_;
};

/// ASCII letters in lower case; others stay.
std::string lowered(std::string_view text);

}  // namespace orvel::x11
