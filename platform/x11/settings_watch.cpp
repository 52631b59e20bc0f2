#include "platform/x11/settings_watch.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

// Not IN_MODIFY: a file being written in place is looked at when its writer closes it.
constexpr std::uint32_t kWatched = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM |
                                   IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                   IN_ONLYDIR;
constexpr std::uint32_t kOfFolder =
    IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED | IN_Q_OVERFLOW;

void addTo(int epoll, int fd) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = fd;
    epoll_ctl(epoll, EPOLL_CTL_ADD, fd, &event);
}

std::string whyNoInstance() {
    const bool areAllTaken = errno == EMFILE;
    return systemError() + (areAllTaken ? "; see fs.inotify.max_user_instances" : "");
}

std::string whyNoWatch(const std::string& folder) {
    const bool areAllTaken = errno == ENOSPC;
    return folder + ": " + systemError() + (areAllTaken ? "; see fs.inotify.max_user_watches" : "");
}

}  // namespace

SettingsWatch::Stamp::Stamp(const SettingsPlace::Name& name) {
    struct stat info {};
    if (::lstat((name.folder + '/' + name.name).c_str(), &info) != 0) return;
    device = info.st_dev;
    inode = info.st_ino;
    size = info.st_size;
    modified = {info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
    changed = {info.st_ctim.tv_sec, info.st_ctim.tv_nsec};
}

SettingsWatch::SettingsWatch()
    : epoll_(epoll_create1(EPOLL_CLOEXEC)), inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (inotify_.isOpen()) {
        addTo(epoll_.get(), inotify_.get());
    } else {
        fallBack(whyNoInstance());
    }
}

void SettingsWatch::follow(const SettingsPlace& place) {
    watchFolders(place);
    stamps_.clear();
    if (!timer_.isOpen()) return;
    for (const SettingsPlace::Name& name : place.decidedBy) stamps_.emplace_back(name, Stamp(name));
}

void SettingsWatch::watchFolders(const SettingsPlace& place) {
    if (!inotify_.isOpen()) return;
    std::map<int, std::set<std::string>> wanted;
    for (const SettingsPlace::Name& decisive : place.decidedBy) {
        const int folder = inotify_add_watch(inotify_.get(), decisive.folder.c_str(), kWatched);
        if (folder >= 0) {
            wanted[folder].insert(decisive.name);
        } else if (errno != ENOENT && errno != ENOTDIR) {
            fallBack(whyNoWatch(decisive.folder));
        }
    }
    for (const auto& [folder, names] : names_) {
        if (!wanted.contains(folder)) inotify_rm_watch(inotify_.get(), folder);
    }
    names_ = std::move(wanted);
}

bool SettingsWatch::drain() {
    const bool isTold = drainEvents();
    if (!timer_.isOpen()) return isTold;
    std::uint64_t ticks = 0;
    const bool isTime = read(timer_.get(), &ticks, sizeof ticks) > 0;
    return isTold || isTime || std::any_of(stamps_.begin(), stamps_.end(), [](const auto& stamped) {
               return Stamp(stamped.first) != stamped.second;
           });
}

void SettingsWatch::fallBack(std::string why) {
    limitation_ = std::move(why);
    if (timer_.isOpen()) return;
    timer_ = OwnedFd(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC));
    const itimerspec everySecond{{1, 0}, {1, 0}};
    timerfd_settime(timer_.get(), 0, &everySecond, nullptr);
    addTo(epoll_.get(), timer_.get());
}

bool SettingsWatch::drainEvents() {
    if (!inotify_.isOpen()) return false;
    bool happened = false;
    alignas(inotify_event) std::array<char, 16384> buffer{};
    while (true) {
        const ssize_t length = read(inotify_.get(), buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR) continue;
        if (length <= 0) return happened;
        inotify_event event{};
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);
             at += sizeof event + event.len) {
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const auto folder = names_.find(event.wd);
            const bool isOurs = folder != names_.end() && event.len > 0 &&
                                folder->second.contains(buffer.data() + at + sizeof event);
            const bool isFolder = (event.mask & kOfFolder) != 0 &&
                                  ((event.mask & IN_Q_OVERFLOW) != 0 || folder != names_.end());
            happened = happened || isOurs || isFolder;
            if ((event.mask & IN_IGNORED) != 0) names_.erase(event.wd);
        }
    }
}

}  // namespace orvel::x11
