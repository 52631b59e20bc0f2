#include "platform/x11/running_sessions.hpp"

#include "platform/base/json.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::string_view kPrefix = "session-";
constexpr std::size_t kNoteSize = 512;

std::string notesFolder() {
    const std::string runtime = runtimeFolder();
    return runtime.empty() ? "" : runtime + "/orvel";
}

/// A display name holds slashes when it names a socket.
std::string fileName(std::string_view display) {
    std::string name(kPrefix);
    for (const char c : display) name += c == '/' ? '_' : c;
    return name;
}

/// The process that holds a note; nothing when none does.
std::optional<pid_t> holderOf(int fd) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    if (fcntl(fd, F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return std::nullopt;
    return lock.l_pid;
}

bool hold(int fd) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return fcntl(fd, F_SETLK, &lock) == 0;
}

std::optional<RunningSession> readNote(const std::string& path) {
    const OwnedFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!fd.isOpen()) return std::nullopt;
    const std::optional<pid_t> holder = holderOf(fd.get());
    const Result<std::string> text = readWhole(fd.get(), kNoteSize);
    if (!holder || !text) return std::nullopt;
    const Result<Json> note = parseJson(text.value());
    if (!note) return std::nullopt;
    const Json* display = note.value().member("display");
    const auto flag = [&](std::string_view name) {
        const Json* member = note.value().member(name);
        return member != nullptr && member->asBool() != nullptr && *member->asBool();
    };
    if (display == nullptr || display->asString() == nullptr) return std::nullopt;
    return RunningSession{*display->asString(), *holder, flag("on"), flag("paused")};
}

}  // namespace

std::vector<RunningSession> runningSessions() {
    std::vector<RunningSession> sessions;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(notesFolder(), error)) {
        if (!entry.path().filename().string().starts_with(kPrefix)) continue;
        if (auto session = readNote(entry.path())) sessions.push_back(std::move(*session));
    }
    return sessions;
}

Result<SessionNote> SessionNote::claim(const std::string& display) {
    const std::string folder = notesFolder();
    if (folder.empty()) return Failure{"no runtime folder: set XDG_RUNTIME_DIR"};
    if (const Result<> made = makeFolders(folder); !made) return Failure{made.error()};
    const std::string path = folder + "/" + fileName(display);
    OwnedFd fd(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!fd.isOpen()) return Failure{path + ": " + systemError()};
    if (!hold(fd.get())) {
        const std::optional<pid_t> holder = holderOf(fd.get());
        const std::string process = holder ? " (process " + std::to_string(*holder) + ")" : "";
        return Failure{"orvel already runs on display " + display + process};
    }
    SessionNote note(display, std::move(fd));
    note.update(false, false);
    return note;
}

SessionNote::SessionNote(std::string display, OwnedFd fd)
    : display_(std::move(display)), fd_(std::move(fd)) {}

void SessionNote::update(bool isOn, bool isPaused) const {
    JsonWriter writer;
    writer.beginObject().member("display", display_).member("on", isOn).member("paused", isPaused);
    std::string text = writer.endObject().text();
    // Always one write of the same length: a reader sees the old note or the new one.
    text.resize(kNoteSize - 1, ' ');
    text += '\n';
    static_cast<void>(!pwrite(fd_.get(), text.data(), text.size(), 0));
}

}  // namespace orvel::x11
