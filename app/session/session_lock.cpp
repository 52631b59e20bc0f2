#include "app/session/session_lock.hpp"

#include <array>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace orvel::session {

namespace {

constexpr mode_t kOwnerOnly = 0600;

int readHolder(int file) {
    std::array<char, 32> text{};
    const ssize_t length = ::pread(file, text.data(), text.size() - 1, 0);
    return length > 0 ? std::atoi(text.data()) : 0;
}

void writeHolder(int file) {
    const std::string text = std::to_string(::getpid()) + '\n';
    const bool isWritten =
        ::ftruncate(file, 0) == 0 &&
        ::pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
    // The number only makes the message of a second start friendlier.
    static_cast<void>(isWritten);
}

}  // namespace

std::string lockFileName(const std::string& display) {
    const std::size_t number = display.rfind(':');
    const std::size_t screen = number == std::string::npos ? number : display.find('.', number);
    std::string name = "session" + display.substr(0, screen) + ".lock";
    for (char& letter : name) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '.';
        if (!isPlain) letter = '-';
    }
    return name;
}

std::optional<SessionLock> SessionLock::take(const std::string& folder, const std::string& display,
                                             LockRefusal& refusal) {
    refusal = {};
    const std::string path = folder + '/' + lockFileName(display);
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kOwnerOnly);
    if (file < 0) {
        refusal.problem = std::strerror(errno);
        return std::nullopt;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK) refusal.problem = std::strerror(errno);
        refusal.holder = readHolder(file);
        ::close(file);
        return std::nullopt;
    }
    writeHolder(file);
    return SessionLock(file);
}

SessionLock::SessionLock(SessionLock&& other) noexcept : file_(std::exchange(other.file_, -1)) {}

SessionLock::~SessionLock() {
    if (file_ >= 0) ::close(file_);
}

}  // namespace orvel::session
