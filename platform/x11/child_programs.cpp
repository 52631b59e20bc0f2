#include "platform/x11/child_programs.hpp"

#include "platform/x11/glib_holders.hpp"

#include <csignal>
#include <unistd.h>

namespace orvel::x11 {

namespace {

/// Environment of a child: ours, with the display that the services are connected to.
class ChildEnvironment {
public:
    explicit ChildEnvironment(const std::string& display) : variables_(g_get_environ()) {
        if (!display.empty())
            variables_ = g_environ_setenv(variables_, "DISPLAY", display.c_str(), TRUE);
    }
    ~ChildEnvironment() { g_strfreev(variables_); }
    ChildEnvironment(const ChildEnvironment&) = delete;
    ChildEnvironment& operator=(const ChildEnvironment&) = delete;

    [[nodiscard]] char** get() const { return variables_; }

private:
    char** variables_;
};

std::vector<char*> argumentVector(const std::string& path,
                                  const std::vector<std::string>& arguments) {
    std::vector<char*> vector{const_cast<char*>(path.c_str())};
    for (const auto& argument : arguments) vector.push_back(const_cast<char*>(argument.c_str()));
    vector.push_back(nullptr);
    return vector;
}

}  // namespace

Result<std::string> runProgram(const std::string& path, const std::vector<std::string>& arguments,
                               const std::string& display) {
    const GObjectHolder<GSubprocessLauncher> launcher(
        g_subprocess_launcher_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                                G_SUBPROCESS_FLAGS_STDERR_MERGE)));
    const ChildEnvironment environment(display);
    g_subprocess_launcher_set_environ(launcher.get(), environment.get());
    auto vector = argumentVector(path, arguments);
    GError* problem = nullptr;
    const GObjectHolder<GSubprocess> child(
        g_subprocess_launcher_spawnv(launcher.get(), vector.data(), &problem));
    const GErrorHolder startError(problem);
    if (child == nullptr) return Failure{messageOf(startError)};
    problem = nullptr;
    GBytes* output = nullptr;
    const bool isRead = g_subprocess_communicate(child.get(), nullptr, nullptr, &output, nullptr,
                                                 &problem) != FALSE;
    const GErrorHolder readError(problem);
    if (!isRead) return Failure{messageOf(readError)};
    gsize size = 0;
    const auto* bytes = static_cast<const char*>(g_bytes_get_data(output, &size));
    std::string text(bytes == nullptr ? "" : bytes, size);
    g_bytes_unref(output);
    return text;
}

Result<> startProgram(const std::string& path, const std::vector<std::string>& arguments,
                      const std::string& display) {
    const ChildEnvironment environment(display);
    auto vector = argumentVector(path, arguments);
    GError* problem = nullptr;
    // The library forks twice, so that the child is nobody's to wait for.
    const bool isStarted =
        g_spawn_async(
            nullptr, vector.data(), environment.get(),
            static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDIN_FROM_DEV_NULL),
            [](gpointer) { detachFromParent(); }, nullptr, nullptr, &problem) != FALSE;
    const GErrorHolder error(problem);
    if (!isStarted) return Failure{messageOf(error)};
    return {};
}

void detachFromParent() {
    ::setsid();
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace orvel::x11
