#include "platform/x11/x11_file_system.hpp"

#include "platform/plist/plist_node.hpp"
#include "platform/x11/file_replacement.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace orvel::x11 {

namespace {

/// No file that this system handles comes near it; a wrong path must not fill the memory.
constexpr std::size_t kMaxFileSize = std::size_t{1} << 30;

Failure failed(const std::string& path) { return {path + ": " + systemError()}; }

Result<std::string> readFile(const std::string& path) {
    const OwnedFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd.isOpen()) return failed(path);
    Result<std::string> bytes = readWhole(fd.get(), kMaxFileSize);
    if (!bytes) return Failure{path + ": " + bytes.error()};
    return bytes;
}

/// A name for a file on its way that no other thread or process uses.
std::string temporaryIn(const std::string& folder) {
    static std::atomic<unsigned> count{0};
    return folder + "/.orvel-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".new";
}

/// A link is kept: the file that it leads to is the one to replace.
std::string throughLink(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

}  // namespace

X11FileSystem::X11FileSystem() : home_(homeFolder()), caches_(cacheFolder()) {}

Result<std::vector<std::string>> X11FileSystem::list(std::string_view path) const {
    const std::string folder(path);
    const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(folder.c_str()), closedir);
    if (!open) return failed(folder);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = readdir(open.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") names.emplace_back(name);
    }
    if (errno != 0) return failed(folder);
    return names;
}

bool X11FileSystem::exists(std::string_view path) const {
    struct stat info {};
    return stat(std::string(path).c_str(), &info) == 0;
}

Result<std::vector<std::byte>> X11FileSystem::read(std::string_view path) const {
    const Result<std::string> bytes = readFile(std::string(path));
    if (!bytes) return Failure{bytes.error()};
    const auto content = std::as_bytes(std::span(bytes.value()));
    return std::vector(content.begin(), content.end());
}

Result<Json> X11FileSystem::readPropertyList(std::string_view path) const {
    const Result<std::string> bytes = readFile(std::string(path));
    if (!bytes) return Failure{bytes.error()};
    const Result<plist::PlistNode> root = plist::parsePlist(bytes.value());
    if (!root) return Failure{std::string(path) + ": " + root.error()};
    return plist::nodeJson(root.value().get());
}

Result<> X11FileSystem::writeAtomically(std::string_view path, std::span<const std::byte> bytes) {
    const std::string file = throughLink(std::string(path));
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const Result<> replaced = replaceFile(file, temporaryIn(folderOf(file)), text, 0600);
    if (!replaced) return Failure{std::string(path) + ": " + replaced.error()};
    return {};
}

Result<> X11FileSystem::remove(std::string_view path) {
    std::error_code error;
    const std::uintmax_t removed = std::filesystem::remove_all(path, error);
    if (error) return Failure{std::string(path) + ": " + error.message()};
    if (removed == 0) return Failure{std::string(path) + ": no such file or folder"};
    return {};
}

Result<> X11FileSystem::createFolder(std::string_view path) {
    return makeFolders(std::string(path));
}

}  // namespace orvel::x11
