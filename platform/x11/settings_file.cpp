#include "platform/x11/settings_file.hpp"

#include "platform/plist/plist_node.hpp"
#include "platform/x11/file_replacement.hpp"
#include "platform/x11/settings_lock.hpp"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <deque>
#include <fcntl.h>
#include <linux/fs.h>
#include <optional>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr int kMaxLinks = 40;
constexpr int kBusyWaitMilliseconds = 2000;
constexpr int kBusyStepMilliseconds = 20;
constexpr double kFreshSeconds = 0.5;

/// Walks a path from the root, following links as the kernel does and noting what decides.
class Walk {
public:
    explicit Walk(const std::string& path) { prepend(path); }

    Result<SettingsPlace> run() {
        while (!rest_.empty()) {
            const std::string name = std::move(rest_.front());
            rest_.pop_front();
            if (const Result<> step = enter(name); !step) return Failure{step.error()};
        }
        place_.file = at_;
        return std::move(place_);
    }

private:
    void prepend(std::string_view path) {
        std::vector<std::string> names;
        while (!path.empty()) {
            const std::size_t slash = std::min(path.find('/'), path.size());
            if (slash > 0 && path.substr(0, slash) != ".")
                names.emplace_back(path.substr(0, slash));
            path.remove_prefix(std::min(slash + 1, path.size()));
        }
        rest_.insert(rest_.begin(), names.begin(), names.end());
    }

    Result<> enter(const std::string& name) {
        if (name == "..") {
            at_ = at_.empty() || folderOf(at_) == "/" ? "" : folderOf(at_);
            return {};
        }
        const std::string folder = at_.empty() ? "/" : at_;
        const std::string entry = at_ + "/" + name;
        struct stat info {};
        if (lstat(entry.c_str(), &info) != 0) {
            if (errno != ENOENT) return Failure{entry + ": " + systemError()};
            return stopAtMissing(folder, name);
        }
        if (S_ISLNK(info.st_mode)) return follow(folder, name, entry);
        const bool isLast = rest_.empty();
        if (isLast) place_.folderExists = true;
        if (isLast || rest_.size() == 1) place_.decidedBy.push_back({folder, name});
        at_ = entry;
        return {};
    }

    Result<> follow(const std::string& folder, const std::string& name, const std::string& entry) {
        if (++links_ > kMaxLinks) return Failure{entry + ": too many symbolic links"};
        char target[4096];
        const ssize_t length = readlink(entry.c_str(), target, sizeof target);
        if (length < 0 || length == sizeof target) return Failure{entry + ": " + systemError()};
        place_.isLinked = true;
        place_.decidedBy.push_back({folder, name});
        if (target[0] == '/') at_.clear();
        prepend(std::string_view(target, static_cast<std::size_t>(length)));
        return {};
    }

    Result<> stopAtMissing(const std::string& folder, const std::string& name) {
        place_.folderExists = rest_.empty();
        place_.decidedBy.push_back({folder, name});
        at_ += "/" + name;
        for (const std::string& missing : rest_) at_ += "/" + missing;
        rest_.clear();
        return {};
    }

    std::string at_;  ///< empty stands for the root folder
    std::deque<std::string> rest_;
    int links_ = 0;
    SettingsPlace place_;
};

/// Whether another program has the file open for writing. The kernel grants a read lease only
/// when nobody has; where it knows no leases, a file changed a moment ago counts as being written.
bool isBeingWritten(int fd) {
    // A program that opens the file while the lease lasts raises this signal, which is ignored
    // by default, unlike the usual one.
    static_cast<void>(fcntl(fd, F_SETSIG, SIGURG));
    if (fcntl(fd, F_SETLEASE, F_RDLCK) == 0) {
        static_cast<void>(fcntl(fd, F_SETLEASE, F_UNLCK));
        return false;
    }
    if (errno == EAGAIN) return true;
    struct stat info {};
    timespec now{};
    if (fstat(fd, &info) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) return false;
    const double age = static_cast<double>(now.tv_sec - info.st_mtim.tv_sec) +
                       static_cast<double>(now.tv_nsec - info.st_mtim.tv_nsec) / 1e9;
    return age >= 0 && age < kFreshSeconds;
}

/// Waits while another program writes the file; it may take a moment, not forever.
SettingsContent readSettled(const SettingsFile& file, const SettingsPlace& place,
                            const SettingsDocument& known) {
    SettingsContent content = file.read(place, {known});
    for (int waited = 0;
         content.state == SettingsContent::State::busy && waited < kBusyWaitMilliseconds;
         waited += kBusyStepMilliseconds) {
        poll(nullptr, 0, kBusyStepMilliseconds);
        content = file.read(place, {known});
    }
    return content;
}

/// Renames without replacing anything.
Result<> renameToFree(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL) return Failure{systemError()};
    if (link(from.c_str(), to.c_str()) != 0 || unlink(from.c_str()) != 0)
        return Failure{systemError()};
    return {};
}

/// Keeps a damaged file under the first free name; returns that name.
Result<std::string> setAside(const std::string& file) {
    for (int n = 1;; ++n) {
        const std::string kept = file + ".damaged-" + std::to_string(n);
        struct stat info {};
        if (lstat(kept.c_str(), &info) == 0) continue;
        const Result<> renamed = renameToFree(file, kept);
        if (renamed) return kept;
        if (errno != EEXIST) return Failure{renamed.error()};
    }
}

/// Makes the folder of the settings. What a link points into is not made: it may be a place
/// that is not mounted yet.
Result<> prepareFolder(const SettingsPlace& place, const std::string& path) {
    if (place.folderExists) return {};
    if (!place.isLinked) return makeFolders(folderOf(place.file));
    return Failure{path + ": the link leads to " + place.file + ", whose folder does not exist"};
}

/// Who removes the owner's right to write wants the file as it is.
Result<> checkWritable(const std::string& file) {
    struct stat info {};
    if (stat(file.c_str(), &info) == 0 && (info.st_mode & S_IWUSR) == 0) {
        return Failure{file + ": the file is read-only"};
    }
    return {};
}

std::string explainNoLock(const std::string& file, const SettingsContent& content,
                          const std::string& error) {
    if (content.state != SettingsContent::State::damaged) return file + ": " + error;
    return file + ": no usable settings (" + content.problem + "), and it cannot be kept aside (" +
           error + "); it stays as it is, defaults apply";
}

}  // namespace

Result<SettingsPlace> SettingsFile::locate() const { return Walk(path_).run(); }

SettingsContent SettingsFile::read(const SettingsPlace& place,
                                   const std::vector<SettingsDocument>& known) const {
    using State = SettingsContent::State;
    const OwnedFd fd(open(place.file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd.isOpen() && errno == ENOENT) return {};
    if (!fd.isOpen()) return {State::unreadable, nullptr, place.file + ": " + systemError()};
    Result<std::string> bytes = readWhole(fd.get(), plist::kMaxPlistSize);
    if (!bytes) return {State::unreadable, nullptr, place.file + " " + bytes.error()};
    for (const SettingsDocument& document : known) {
        if (document != nullptr && document->bytes() == bytes.value())
            return {State::good, document, {}};
    }
    Result<plist::PreferenceDocument> parsed =
        plist::PreferenceDocument::parse(std::move(bytes).value());
    if (parsed) {
        return {State::good,
                std::make_shared<plist::PreferenceDocument>(std::move(parsed).value()),
                {}};
    }
    return {isBeingWritten(fd.get()) ? State::busy : State::damaged, nullptr, parsed.error()};
}

Result<SettingsDocument> SettingsFile::update(const Decide& decide, const SettingsDocument& known,
                                              const Report& report) const {
    const Result<SettingsPlace> place = locate();
    if (!place) return Failure{place.error()};
    const std::string& file = place.value().file;
    if (const Result<> prepared = prepareFolder(place.value(), path_); !prepared) {
        return Failure{prepared.error()};
    }
    const Result<SettingsLock> lock = SettingsLock::acquire(file + ".lock");
    if (!lock) return Failure{explainNoLock(file, read(place.value(), {}), lock.error())};

    const SettingsContent content = readSettled(*this, place.value(), known);
    if (content.state == SettingsContent::State::unreadable) return Failure{content.problem};
    if (content.state == SettingsContent::State::busy) {
        return Failure{file + ": another program is writing it"};
    }
    if (content.state == SettingsContent::State::damaged) {
        const Result<std::string> kept = setAside(file);
        if (!kept) return Failure{file + ": damaged, and cannot be kept aside: " + kept.error()};
        report(file + ": no usable settings (" + content.problem + "); kept as " +
               nameOf(kept.value()) + ", defaults apply");
    }

    const SettingsDocument onDisk =
        content.document ? content.document : std::make_shared<plist::PreferenceDocument>();
    Result<plist::PreferenceDocument> merged = onDisk->with(decide(onDisk));
    if (!merged) return Failure{file + ": " + merged.error()};
    if (merged.value().bytes() == onDisk->bytes()) return onDisk;
    const SettingsDocument document =
        std::make_shared<plist::PreferenceDocument>(std::move(merged).value());
    if (const Result<> writable = checkWritable(file); !writable) return Failure{writable.error()};
    const std::string temporary = folderOf(file) + "/." + nameOf(file) + ".new";
    const Result<> replaced = replaceFile(file, temporary, document->bytes(), 0600);
    if (!replaced) return Failure{file + ": " + replaced.error()};
    return document;
}

}  // namespace orvel::x11
