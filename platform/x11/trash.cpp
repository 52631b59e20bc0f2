#include "platform/x11/trash.hpp"

#include "platform/x11/glib_holders.hpp"

#include <gio/gunixmounts.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace orvel::x11 {

namespace fs = std::filesystem;

namespace {

using File = GObjectHolder<GFile>;

std::vector<fs::path> trashFolders() {
    std::vector<fs::path> folders{fs::path(lent(g_get_user_data_dir())) / "Trash"};
    const auto user = std::to_string(::getuid());
    GList* mounts = g_unix_mounts_get(nullptr);
    for (const GList* each = mounts; each != nullptr; each = each->next) {
        const fs::path top =
            lent(g_unix_mount_get_mount_path(static_cast<GUnixMountEntry*>(each->data)));
        folders.push_back(top / (".Trash-" + user));
        folders.push_back(top / ".Trash" / user);
    }
    g_list_free_full(
        mounts, [](gpointer entry) { g_unix_mount_free(static_cast<GUnixMountEntry*>(entry)); });
    return folders;
}

/// The folder itself, not a link that somebody else put in its place, and the user's own.
bool isOwnFolder(const fs::path& folder) {
    struct stat info {};
    return ::lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::getuid();
}

}  // namespace

Result<> emptyTrashFolder(const fs::path& folder) {
    Result<> outcome;
    // Contents first: what remains after an interruption still has its way back described.
    for (const auto* part : {"files", "info"}) {
        const auto inside = folder / part;
        std::error_code error;
        if (!isOwnFolder(inside)) continue;
        for (fs::directory_iterator each(inside, error), last; !error && each != last;
             each.increment(error)) {
            std::error_code failed;
            fs::remove_all(each->path(), failed);
            if (failed && outcome)
                outcome = Failure{each->path().string() + ": " + failed.message()};
        }
        if (error && outcome) outcome = Failure{inside.string() + ": " + error.message()};
    }
    std::error_code ignored;
    fs::remove(folder / "directorysizes", ignored);
    return outcome;
}

Result<> emptyTrash() {
    Result<> outcome;
    for (const auto& folder : trashFolders()) {
        if (!isOwnFolder(folder)) continue;
        auto emptied = emptyTrashFolder(folder);
        if (outcome && !emptied) outcome = std::move(emptied);
    }
    return outcome;
}

Result<fs::path> makeUntitledFolder(const fs::path& parent) {
    constexpr int kMostTries = 10'000;
    for (int number = 1; number <= kMostTries; ++number) {
        const auto name =
            number == 1 ? std::string("未命名文件夹") : "未命名文件夹 " + std::to_string(number);
        const auto path = parent / name;
        const File file(g_file_new_for_path(path.c_str()));
        GError* problem = nullptr;
        if (g_file_make_directory(file.get(), nullptr, &problem) != FALSE) return path;
        const GErrorHolder error(problem);
        if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_EXISTS) == FALSE)
            return Failure{messageOf(error)};
    }
    return Failure{parent.string() + ": too many folders without a name"};
}

}  // namespace orvel::x11
