#include "platform/x11/folder_finder.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>

namespace orvel::x11 {

namespace fs = std::filesystem;

namespace {

std::optional<std::uint64_t> hexAfter(std::string_view line, std::string_view key) {
    const auto at = line.find(key);
    if (at == std::string_view::npos) return std::nullopt;
    const auto digits = line.substr(at + key.size());
    std::uint64_t number = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<FolderId> identify(const fs::path& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) return std::nullopt;
    return FolderId{info.st_dev, info.st_ino};
}

std::string expandedHome(std::string path) {
    const char* home = std::getenv("HOME");
    if (home != nullptr && (path == "~" || path.starts_with("~/"))) path.replace(0, 1, home);
    return path;
}

/// Walks folders level by level, the nearest to the roots first, until the time is up.
class FolderWalk {
public:
    FolderWalk(const std::vector<fs::path>& roots, std::chrono::milliseconds limit)
        : pending_(roots.begin(), roots.end()), end_(std::chrono::steady_clock::now() + limit) {}

    template <typename Accept>
    std::optional<fs::path> find(const Accept& accept) {
        while (!pending_.empty() && std::chrono::steady_clock::now() < end_) {
            const auto folder = pending_.front();
            pending_.pop_front();
            std::error_code error;
            for (fs::directory_iterator each(folder, error), last; !error && each != last;
                 each.increment(error)) {
                std::error_code unreadable;
                // A link would lead in circles, and its target is found where it is.
                if (each->is_symlink(unreadable) || !each->is_directory(unreadable)) continue;
                if (accept(each->path())) return each->path();
                const auto name = each->path().filename().string();
                if (!name.starts_with('.') && folder != "/") pending_.push_back(each->path());
            }
        }
        return std::nullopt;
    }

private:
    std::deque<fs::path> pending_;
    std::chrono::steady_clock::time_point end_;
};

}  // namespace

std::set<FolderId> watchedFoldersIn(std::string_view descriptorInfo) {
    std::set<FolderId> folders;
    while (!descriptorInfo.empty()) {
        const auto line = descriptorInfo.substr(0, descriptorInfo.find('\n'));
        descriptorInfo.remove_prefix(std::min(line.size() + 1, descriptorInfo.size()));
        if (!line.starts_with("inotify ")) continue;
        const auto inode = hexAfter(line, " ino:");
        const auto device = hexAfter(line, " sdev:");
        if (!inode || !device) continue;
        // The kernel's own packing: twenty bits of minor number.
        constexpr unsigned kMinorBits = 20;
        const auto packed = static_cast<unsigned>(*device);
        folders.insert({makedev(packed >> kMinorBits, packed & ((1U << kMinorBits) - 1)), *inode});
    }
    return folders;
}

std::set<FolderId> watchedFolders(ProcessId process) {
    std::set<FolderId> folders;
    std::error_code error;
    const fs::path descriptors = "/proc/" + std::to_string(process) + "/fdinfo";
    for (const auto& descriptor : fs::directory_iterator(descriptors, error)) {
        std::ifstream file(descriptor.path());
        const std::string text((std::istreambuf_iterator<char>(file)), {});
        folders.merge(watchedFoldersIn(text));
    }
    return folders;
}

std::vector<std::string> folderNamesIn(std::string_view title) {
    constexpr auto kSeparators = std::to_array<std::string_view>({" - ", " — ", " – "});
    std::vector<std::string> names;
    if (title.empty()) return names;
    names.emplace_back(title);
    for (const auto separator : kSeparators) {
        const auto at = title.rfind(separator);
        if (at != std::string_view::npos && at > 0) names.emplace_back(title.substr(0, at));
    }
    return names;
}

std::optional<fs::path> findShownFolder(std::string_view title, const std::set<FolderId>& watched,
                                        const std::vector<fs::path>& roots,
                                        std::chrono::milliseconds limit) {
    const auto isWatched = [&](const fs::path& path) {
        const auto id = identify(path);
        return id && watched.contains(*id);
    };
    const auto names = folderNamesIn(title);
    for (const auto& name : names) {
        const auto path = expandedHome(name);
        if (path.starts_with('/') && identify(path)) return fs::path(path);
    }
    const auto isNamed = [&](const fs::path& path) {
        return std::find(names.begin(), names.end(), path.filename().string()) != names.end();
    };
    for (const auto& root : roots) {
        if (isNamed(root) && isWatched(root)) return root;
    }
    auto found = FolderWalk(roots, limit).find([&](const fs::path& path) {
        return isNamed(path) && isWatched(path);
    });
    if (found) return found;
    // Home, the file system and their like have names of their own in the title.
    if (std::count_if(roots.begin(), roots.end(), isWatched) != 1) return std::nullopt;
    return *std::find_if(roots.begin(), roots.end(), isWatched);
}

}  // namespace orvel::x11
