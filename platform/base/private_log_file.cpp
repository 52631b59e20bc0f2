#include "platform/base/private_log_file.hpp"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvel {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

}  // namespace

PrivateLogFile::PrivateLogFile(std::filesystem::path path, std::uintmax_t limit)
    : path_(std::move(path)), limit_(limit) {}

PrivateLogFile::~PrivateLogFile() { close(); }

void PrivateLogFile::write(std::string_view line) {
    if (file_ < 0 && !open()) return;
    if (size_ > 0 && size_ + line.size() + 1 > limit_) rotate();
    const std::string text = std::string(line) + '\n';
    const ssize_t written = ::write(file_, text.data(), text.size());
    if (written > 0) size_ += static_cast<std::uintmax_t>(written);
}

bool PrivateLogFile::open() {
    std::error_code error;
    std::filesystem::create_directories(path_.parent_path(), error);
    constexpr int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW;
    file_ = ::open(path_.c_str(), flags, kOwnerOnly);
    if (file_ < 0) return false;
    // The file may come from a time or a program with laxer habits.
    ::fchmod(file_, kOwnerOnly);
    struct stat status {};
    size_ = ::fstat(file_, &status) == 0 ? static_cast<std::uintmax_t>(status.st_size) : 0;
    return true;
}

void PrivateLogFile::close() {
    if (file_ >= 0) ::close(std::exchange(file_, -1));
}

void PrivateLogFile::rotate() {
    close();
    std::error_code error;
    std::filesystem::rename(path_, path_.string() + ".1", error);
    open();
}

}  // namespace orvel
