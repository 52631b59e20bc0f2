#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <string_view>
#include <sys/types.h>

namespace orvel::x11 {

/// A descriptor that closes itself.
class OwnedFd {
public:
    OwnedFd() = default;
    explicit OwnedFd(int fd) : fd_(fd) {}
    OwnedFd(OwnedFd&& other) noexcept : fd_(other.release()) {}
    OwnedFd& operator=(OwnedFd&& other) noexcept;
    ~OwnedFd();

    [[nodiscard]] int get() const { return fd_; }
    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }
    int release();

private:
    int fd_ = -1;
};

/// The text of `errno`.
std::string systemError();

/// The folder part of a path, and the name behind it.
std::string folderOf(std::string_view path);
std::string nameOf(std::string_view path);

/// Replaces a file as a whole, or leaves it as it was, also when power fails: written beside it
/// as `temporary`, brought to the disk, then renamed. A file that is there keeps its owner.
Result<> replaceFile(const std::string& path, const std::string& temporary, std::string_view bytes,
                     mode_t mode);

/// Makes a folder with the ones above it, those that are missing for the user alone.
Result<> makeFolders(const std::string& path);

/// A file that is no regular file has no bytes; larger ones than `limit` are refused.
Result<std::string> readWhole(int fd, std::size_t limit);

}  // namespace orvel::x11
