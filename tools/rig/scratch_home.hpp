#pragma once

#include "tools/rig/environment.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::rig {

/// A home folder with its XDG folders, empty at first and gone at the end, together with every
/// process that still lives in it then: desktop services start others that nobody ends.
class ScratchHome {
public:
    ScratchHome();
    ~ScratchHome();
    ScratchHome(const ScratchHome&) = delete;
    ScratchHome& operator=(const ScratchHome&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path config() const { return path_ / ".config"; }
    std::filesystem::path cache() const { return path_ / ".cache"; }
    std::filesystem::path data() const { return path_ / ".local/share"; }
    std::filesystem::path state() const { return path_ / ".local/state"; }
    std::filesystem::path runtime() const { return path_ / "run"; }

    /// PATH, a neutral locale, HOME and the XDG folders.
    Environment environment() const;

    /// Every regular file of the home that holds these bytes.
    std::vector<std::filesystem::path> filesContaining(std::string_view bytes) const;

private:
    std::filesystem::path path_;
};

/// What can be read of a file; empty when there is none.
std::string contentOf(const std::filesystem::path& file);

/// The processes that run with this home, by id; whoever left their group included. They know
/// it by their environment, so a process that cleared its own escapes.
std::vector<int> processesOf(const std::filesystem::path& home);

}  // namespace orvel::rig
