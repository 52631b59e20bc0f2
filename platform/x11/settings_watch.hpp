#pragma once

#include "platform/x11/file_replacement.hpp"
#include "platform/x11/settings_file.hpp"

#include <map>
#include <set>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace orvel::x11 {

/// Notices when the settings file may have become another one. Main thread.
class SettingsWatch {
public:
    SettingsWatch();

    /// Readable when something happened. Lasts as long as this object.
    [[nodiscard]] int fd() const { return epoll_.get(); }
    /// Watches the names that decide at `place`, and no others.
    void follow(const SettingsPlace& place);
    /// Takes what happened; whether any of it concerns the settings.
    bool drain();
    /// Why changes are only looked for, once a second and with each `drain`; empty while the kernel
    /// tells them.
    [[nodiscard]] const std::string& limitation() const { return limitation_; }

private:
    /// What tells that a name stands for another file, or for other bytes; all 0 for no file.
    struct Stamp {
        explicit Stamp(const SettingsPlace::Name& name);
        bool operator==(const Stamp&) const = default;

        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        std::pair<time_t, long> modified;
        std::pair<time_t, long> changed;
    };

    void watchFolders(const SettingsPlace& place);
    void fallBack(std::string why);
    bool drainEvents();

    OwnedFd epoll_;
    OwnedFd inotify_;
    OwnedFd timer_;  ///< open only where the kernel cannot tell
    std::string limitation_;
    std::map<int, std::set<std::string>> names_;  ///< by watched folder
    /// Only where the kernel cannot tell.
    std::vector<std::pair<SettingsPlace::Name, Stamp>> stamps_;
};

}  // namespace orvel::x11
