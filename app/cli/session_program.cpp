#include "app/cli/session_program.hpp"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <unistd.h>

namespace orvel {

namespace {

namespace fs = std::filesystem;

constexpr int kCannotStart = 1;

std::vector<fs::path> places() {
    std::error_code unreadable;
    const fs::path own = fs::read_symlink("/proc/self/exe", unreadable).parent_path();
    return {own / "orvel-session", own / "../libexec/orvel/orvel-session"};
}

}  // namespace

int becomeSessionProgram(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const auto candidates = places();
    for (const fs::path& program : candidates) {
        ::execv(program.c_str(), argv.data());
        if (errno == ENOENT) continue;
        std::cerr << "orvel: cannot start " << program.string() << ": " << std::strerror(errno)
                  << '\n';
        return kCannotStart;
    }
    std::cerr << "orvel: orvel-session is not installed beside this program (looked for "
              << candidates.front().string() << " and " << candidates.back().string() << ")\n";
    return kCannotStart;
}

}  // namespace orvel
