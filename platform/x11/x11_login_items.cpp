#include "platform/x11/x11_login_items.hpp"

#include "platform/x11/file_replacement.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace orvel::x11 {

namespace {

constexpr std::string_view kEntryName = "orvel.desktop";
constexpr std::size_t kMaxEntrySize = 1 << 20;

std::string entryPath() { return configFolder() + "/autostart/" + std::string(kEntryName); }

bool exists(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0;
}

/// Whether an entry of the system would start the program without one of the user.
bool isStartedForEverybody() {
    const char* configured = std::getenv("XDG_CONFIG_DIRS");
    std::string_view folders = configured == nullptr || *configured == 0 ? "/etc/xdg" : configured;
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        if (exists(std::string(folders.substr(0, end)) + "/autostart/" + std::string(kEntryName))) {
            return true;
        }
        folders.remove_prefix(std::min(end + 1, folders.size()));
    }
    return false;
}

/// A program path as an argument of the `Exec` key.
std::string quotedForExec(std::string_view path) {
    std::string quoted = "\"";
    for (const char c : path) {
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos) quoted += "\\\\";
        if (c == '\\') quoted += '\\';
        if (c == '%') quoted += '%';
        quoted += c;
    }
    return quoted + "\"";
}

/// A plain value: backslashes are the only signs with a meaning.
std::string escaped(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        if (c == '\\') plain += '\\';
        plain += c;
    }
    return plain;
}

std::string entryText(const std::string& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Orvel\n"
           "Exec=" +
           quotedForExec(program) +
           " run\n"
           "TryExec=" +
           escaped(program) +
           "\n"
           "Icon=orvel\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

constexpr std::string_view kHidingEntry =
    "[Desktop Entry]\n"
    "Type=Application\n"
    "Name=Orvel\n"
    "Hidden=true\n";

/// The value of a key in the main group; empty when there is none.
std::string_view keyValue(std::string_view entry, std::string_view key) {
    std::string_view group;
    while (!entry.empty()) {
        const std::string_view line = entry.substr(0, std::min(entry.find('\n'), entry.size()));
        entry.remove_prefix(std::min(line.size() + 1, entry.size()));
        if (line.starts_with('[')) group = line;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || !group.starts_with("[Desktop Entry]")) continue;
        std::string_view name = line.substr(0, equals);
        name = name.substr(0, name.find_last_not_of(' ') + 1);
        if (name != key) continue;
        const std::string_view value = line.substr(equals + 1);
        return value.substr(std::min(value.find_first_not_of(' '), value.size()));
    }
    return {};
}

/// Whether the session would start what an entry says.
bool startsSomething(const std::string& path) {
    const OwnedFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!fd.isOpen()) return false;
    const Result<std::string> entry = readWhole(fd.get(), kMaxEntrySize);
    if (!entry) return false;
    const auto is = [&](std::string_view key, std::string_view value) {
        return keyValue(entry.value(), key).starts_with(value);
    };
    const std::string_view tried = keyValue(entry.value(), "TryExec");
    const bool isThere = !tried.starts_with('/') || access(std::string(tried).c_str(), X_OK) == 0;
    return isThere && !keyValue(entry.value(), "Exec").empty() && !is("Hidden", "true") &&
           !is("X-GNOME-Autostart-enabled", "false");
}

Result<> writeEntry(std::string_view text) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(entryPath(), error);
    const std::string path = error ? entryPath() : target.string();
    if (const Result<> made = makeFolders(folderOf(path)); !made) return made;
    const std::string temporary = folderOf(path) + "/.orvel-" + std::to_string(getpid()) + ".new";
    const Result<> written = replaceFile(path, temporary, text, 0644);
    if (!written) return Failure{path + ": " + written.error()};
    return {};
}

}  // namespace

Result<> X11LoginItems::registerProgram() {
    if (startsSomething(entryPath())) return {};
    return writeEntry(entryText(program_));
}

Result<> X11LoginItems::unregisterProgram() {
    if (isStartedForEverybody()) return writeEntry(kHidingEntry);
    if (unlink(entryPath().c_str()) != 0 && errno != ENOENT) {
        return Failure{entryPath() + ": " + systemError()};
    }
    return {};
}

}  // namespace orvel::x11
