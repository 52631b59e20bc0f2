#include "platform/x11/file_replacement.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

Result<> writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return Failure{systemError()};
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

/// Without it a rename may be undone by a power cut. Some file systems have none for folders.
Result<> syncFolder(const std::string& folder) {
    const OwnedFd fd(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd.isOpen()) return Failure{systemError()};
    if (fsync(fd.get()) != 0 && errno != EINVAL && errno != EROFS) return Failure{systemError()};
    return {};
}

/// A program run by the superuser must not take a user's file away from them.
void keepOwner(int fd, const std::string& path, const std::string& folder) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 && stat(folder.c_str(), &info) != 0) return;
    if (info.st_uid != geteuid()) static_cast<void>(!fchown(fd, info.st_uid, info.st_gid));
}

void giveToOwnerOfParent(const std::string& folder) {
    struct stat info {};
    if (stat(folderOf(folder).c_str(), &info) != 0 || info.st_uid == geteuid()) return;
    if (geteuid() == 0) static_cast<void>(!chown(folder.c_str(), info.st_uid, info.st_gid));
}

Result<> fillTemporary(const std::string& path, const std::string& temporary,
                       std::string_view bytes, mode_t mode) {
    const OwnedFd fd(
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!fd.isOpen()) return Failure{systemError()};
    keepOwner(fd.get(), path, folderOf(path));
    if (fchmod(fd.get(), mode) != 0) return Failure{systemError()};
    Result<> written = writeAll(fd.get(), bytes);
    if (written && fsync(fd.get()) != 0) return Failure{systemError()};
    return written;
}

}  // namespace

OwnedFd& OwnedFd::operator=(OwnedFd&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
}

OwnedFd::~OwnedFd() {
    if (fd_ >= 0) close(fd_);
}

int OwnedFd::release() { return std::exchange(fd_, -1); }

std::string systemError() { return std::strerror(errno); }

std::string folderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return ".";
    return std::string(path.substr(0, std::max<std::size_t>(slash, 1)));
}

std::string nameOf(std::string_view path) { return std::string(path.substr(path.rfind('/') + 1)); }

Result<> replaceFile(const std::string& path, const std::string& temporary, std::string_view bytes,
                     mode_t mode) {
    unlink(temporary.c_str());  // What a killed writer left.
    Result<> done = fillTemporary(path, temporary, bytes, mode);
    if (done && rename(temporary.c_str(), path.c_str()) != 0) done = Failure{systemError()};
    if (!done) {
        unlink(temporary.c_str());
        return done;
    }
    return syncFolder(folderOf(path));
}

Result<> makeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        const std::string folder = path.substr(0, slash);
        struct stat info {};
        if (mkdir(folder.c_str(), 0700) == 0) {
            giveToOwnerOfParent(folder);
        } else if (errno != EEXIST && stat(folder.c_str(), &info) != 0) {
            return Failure{folder + ": " + systemError()};
        }
        if (slash == std::string::npos) break;
    }
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) return Failure{path + ": " + systemError()};
    if (!S_ISDIR(info.st_mode)) return Failure{path + ": not a folder"};
    return {};
}

Result<std::string> readWhole(int fd, std::size_t limit) {
    struct stat info {};
    if (fstat(fd, &info) != 0) return Failure{systemError()};
    if (S_ISDIR(info.st_mode)) return Failure{"is a folder"};
    if (!S_ISREG(info.st_mode)) return Failure{"is no regular file"};
    std::string bytes;
    std::size_t filled = 0;
    while (true) {
        if (static_cast<std::size_t>(std::max<off_t>(info.st_size, 0)) > limit || filled > limit) {
            return Failure{"is larger than " + std::to_string(limit >> 20) + " MiB"};
        }
        bytes.resize(std::max(filled + 4096, static_cast<std::size_t>(info.st_size) + 1));
        const ssize_t got = read(fd, bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return Failure{systemError()};
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    return bytes;
}

}  // namespace orvel::x11
