#include "tools/rig/scratch_home.hpp"

#include "tools/rig/poll_until.hpp"
#include "tools/rig/rig_error.hpp"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

namespace orvel::rig {
namespace fs = std::filesystem;
namespace {

std::optional<int> processId(const fs::path& entry) {
    const std::string name = entry.filename();
    int id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    if (error != std::errc() || end != name.data() + name.size()) {
        return std::nullopt;
    }
    return id;
}

// A process that has ended but was not waited for yet is no longer running.
bool isZombie(const fs::path& entry) {
    const std::string stat = contentOf(entry / "stat");
    const auto afterName = stat.rfind(')');
    return afterName != std::string::npos && stat.compare(afterName, 3, ") Z") == 0;
}

// True when there was nobody to kill.
bool killedAll(const std::vector<int>& processes) {
    for (const int process : processes) {
        kill(process, SIGKILL);
    }
    return processes.empty();
}

}  // namespace

ScratchHome::ScratchHome() {
    std::string name = (fs::temp_directory_path() / "orvel-home-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        failWithErrno("cannot make a folder like " + name);
    }
    path_ = name;
    for (const fs::path& folder : {config(), cache(), data(), state(), runtime()}) {
        fs::create_directories(folder);
        fs::permissions(folder, fs::perms::owner_all);
    }
}

ScratchHome::~ScratchHome() {
    // A process may start another while it is being looked for.
    pollUntil([this] { return killedAll(processesOf(path_)); });
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

Environment ScratchHome::environment() const {
    const char* searchPath = std::getenv("PATH");
    return {
        {"PATH", searchPath != nullptr ? searchPath : "/usr/bin:/bin"},
        {"LANG", "C.UTF-8"},
        {"HOME", path_},
        {"XDG_CONFIG_HOME", config()},
        {"XDG_CACHE_HOME", cache()},
        {"XDG_DATA_HOME", data()},
        {"XDG_STATE_HOME", state()},
        {"XDG_RUNTIME_DIR", runtime()},
    };
}

std::vector<fs::path> ScratchHome::filesContaining(std::string_view bytes) const {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(path_)) {
        if (fs::is_regular_file(entry.symlink_status()) &&
            contentOf(entry.path()).find(bytes) != std::string::npos) {
            found.push_back(entry.path());
        }
    }
    return found;
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    // The files of a process that ends meanwhile stop in the middle. Iterators would throw then.
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

std::vector<int> processesOf(const fs::path& home) {
    const std::string entryInEnvironment = std::string("\0HOME=", 6) + home.string() + '\0';
    std::vector<int> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::optional<int> id = processId(entry.path());
        // The leading zero makes the first variable match like the others.
        if (id && !isZombie(entry.path()) &&
            ('\0' + contentOf(entry.path() / "environ")).find(entryInEnvironment) !=
                std::string::npos) {
            found.push_back(*id);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace orvel::rig
