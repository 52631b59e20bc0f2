#include "platform/x11/settings_lock.hpp"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr int kWaitMilliseconds = 5000;
constexpr int kStepMilliseconds = 5;

/// Whether the locked file is still the one under this name: the last owner removes it.
bool isCurrent(const std::string& path, int fd) {
    struct stat named {};
    struct stat locked {};
    return stat(path.c_str(), &named) == 0 && fstat(fd, &locked) == 0 &&
           named.st_ino == locked.st_ino && named.st_dev == locked.st_dev;
}

}  // namespace

Result<SettingsLock> SettingsLock::acquire(const std::string& path) {
    for (int waited = 0; waited <= kWaitMilliseconds; waited += kStepMilliseconds) {
        OwnedFd fd(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!fd.isOpen()) return Failure{systemError()};
        if (flock(fd.get(), LOCK_EX | LOCK_NB) == 0) {
            if (isCurrent(path, fd.get())) return SettingsLock(path, std::move(fd));
            continue;
        }
        // A file system without locks: going on is better than losing the setting.
        if (errno == ENOLCK || errno == EOPNOTSUPP) return SettingsLock(path, std::move(fd));
        if (errno != EWOULDBLOCK && errno != EINTR) return Failure{systemError()};
        poll(nullptr, 0, kStepMilliseconds);
    }
    return Failure{"another program holds " + nameOf(path)};
}

SettingsLock::~SettingsLock() {
    if (fd_.isOpen()) unlink(path_.c_str());
}

}  // namespace orvel::x11
