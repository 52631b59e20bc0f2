#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orvel::test {

/// A folder of its own that goes away with everything in it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string name = std::filesystem::temp_directory_path() / "orvel-test-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch folder");
        path_ = std::filesystem::canonical(name);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string at(std::string_view name) const {
        return path_ + "/" + std::string(name);
    }

    /// Writes a file in place, as an editor does, and makes the folders above it.
    void write(std::string_view name, std::string_view bytes) const {
        std::filesystem::create_directories(std::filesystem::path(at(name)).parent_path());
        std::ofstream(at(name), std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    /// Empty when there is no such file.
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(at(name), std::ios::binary).rdbuf();
        return bytes.str();
    }
    [[nodiscard]] bool has(std::string_view name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(at(name)));
    }
    /// Permission bits.
    [[nodiscard]] unsigned mode(std::string_view name) const {
        struct stat info {};
        return stat(at(name).c_str(), &info) == 0 ? info.st_mode & 07777U : 0U;
    }

private:
    std::string path_;
};

/// The home folder and the XDG variables of this process, somewhere harmless while this lives.
class ScratchHome : public ScratchFolder {
public:
    ScratchHome() {
        set("HOME", path());
        set("XDG_CONFIG_HOME", at(".config"));
        set("XDG_CACHE_HOME", at(".cache"));
        set("XDG_STATE_HOME", at(".local/state"));
        set("XDG_DATA_HOME", at(".local/share"));
        set("XDG_RUNTIME_DIR", at("run"));
        std::filesystem::create_directory(at("run"));
        std::filesystem::permissions(at("run"), std::filesystem::perms::owner_all);
    }
    ~ScratchHome() {
        for (const auto& [name, value] : before_) {
            if (value.first) {
                setenv(name.c_str(), value.second.c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }

    void set(const std::string& name, const std::string& value) {
        remember(name);
        setenv(name.c_str(), value.c_str(), 1);
    }
    void unset(const std::string& name) {
        remember(name);
        unsetenv(name.c_str());
    }

private:
    void remember(const std::string& name) {
        const char* value = getenv(name.c_str());
        before_.try_emplace(name, value != nullptr, value == nullptr ? "" : value);
    }

    std::map<std::string, std::pair<bool, std::string>> before_;
};

}  // namespace orvel::test
