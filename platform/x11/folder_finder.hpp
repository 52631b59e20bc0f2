#pragma once

#include "platform/accessibility_windows.hpp"

#include <chrono>
#include <compare>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// A folder as the kernel knows it.
struct FolderId {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    auto operator<=>(const FolderId&) const = default;
};

/// The folders that a process watches for changes: a file manager watches those it shows.
std::set<FolderId> watchedFolders(ProcessId process);
/// The same from the text of one entry in /proc/PID/fdinfo.
std::set<FolderId> watchedFoldersIn(std::string_view descriptorInfo);

/// What a file manager's window title may name: a path, or the name of a folder, with and without
/// the program's own name behind it. The likeliest first.
std::vector<std::string> folderNamesIn(std::string_view title);

/// The folder that a window of that title shows: the title gives the name, and only a folder that
/// the process watches counts. `roots` are searched in order, the nearest folders first; when just
/// one of them is watched itself, it is found whatever the title calls it.
std::optional<std::filesystem::path> findShownFolder(
    std::string_view title, const std::set<FolderId>& watched,
    const std::vector<std::filesystem::path>& roots, std::chrono::milliseconds limit);

}  // namespace orvel::x11
