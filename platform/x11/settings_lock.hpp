#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/file_replacement.hpp"

#include <string>

namespace orvel::x11 {

/// Keeps other writers away while it lives. The side file exists only that long, so that nothing
/// is left in a folder that somebody keeps under version control.
class SettingsLock {
public:
    /// Waits for other writers, but not for one that never ends.
    static Result<SettingsLock> acquire(const std::string& path);

    SettingsLock(SettingsLock&&) = default;
    SettingsLock& operator=(SettingsLock&&) = default;
    ~SettingsLock();

private:
    SettingsLock(std::string path, OwnedFd fd) : path_(std::move(path)), fd_(std::move(fd)) {}

    std::string path_;
    OwnedFd fd_;
};

}  // namespace orvel::x11
