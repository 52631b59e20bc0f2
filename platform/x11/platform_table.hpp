#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// One line `key = value` of the user's platform table.
struct TableEntry {
    std::string section;
    std::string key;
    std::string value;
    int line = 0;
};

/// What the user says about this desktop in `$XDG_CONFIG_HOME/orvel/platform.conf`:
///
///     [keys]
///     fn = Menu                                the key that stands for Fn
///     [applications]
///     com.apple.Terminal = xterm.desktop       the counterpart of an application of macOS
///     [shortcuts]
///     file-manager Command+Up = Alt+Up         what a macOS shortcut becomes there
///
/// Lines that begin with # are comments. A wrong line is reported and left out; the others hold.
struct PlatformTable {
    std::string path;
    std::vector<TableEntry> entries;
    /// `FILE:LINE: what is wrong`, in the order of the lines.
    std::vector<std::string> errors;

    [[nodiscard]] std::vector<TableEntry> section(std::string_view name) const;
    /// The text of an error about that entry, for the readers of its section.
    [[nodiscard]] std::string errorAt(const TableEntry& entry, std::string_view what) const;
};

PlatformTable parsePlatformTable(std::string_view path, std::string_view text);

/// The user's table; without a file it is empty. A file that cannot be read is one error.
PlatformTable loadPlatformTable();

}  // namespace orvel::x11
