#include "platform/x11/xdg_folders.hpp"

#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace orvel::x11 {

namespace {

std::string withoutSlash(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path;
}

std::string absoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? withoutSlash(value) : std::string();
}

std::string folder(const char* variable, std::string_view belowHome) {
    const std::string configured = absoluteVariable(variable);
    return configured.empty() ? homeFolder().append(belowHome) : configured;
}

/// Whether nobody else can have put anything into this folder.
bool isOursAlone(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid() &&
           (info.st_mode & 077) == 0;
}

}  // namespace

std::string homeFolder() {
    const std::string configured = absoluteVariable("HOME");
    if (!configured.empty()) return configured == "/" ? std::string() : configured;
    const passwd* user = getpwuid(geteuid());
    return user == nullptr || user->pw_dir == nullptr ? std::string() : withoutSlash(user->pw_dir);
}

std::string configFolder() { return folder("XDG_CONFIG_HOME", "/.config"); }

std::string cacheFolder() { return folder("XDG_CACHE_HOME", "/.cache"); }

std::string stateFolder() { return folder("XDG_STATE_HOME", "/.local/state"); }

std::string runtimeFolder() {
    std::string configured = absoluteVariable("XDG_RUNTIME_DIR");
    if (!configured.empty()) return configured;
    const std::string user = std::to_string(geteuid());
    std::string usual = "/run/user/" + user;
    if (isOursAlone(usual)) return usual;
    std::string own = "/tmp/orvel-runtime-" + user;
    if (mkdir(own.c_str(), 0700) == 0 || isOursAlone(own)) return own;
    return {};
}

}  // namespace orvel::x11
