#include "engine/synthesis/system_scripts.hpp"
#include "platform/x11/x11_accessibility_permission.hpp"
#include "platform/x11/x11_log.hpp"
#include "tests/platform/contract/accessibility_permission_contract.hpp"
#include "tests/platform/contract/launcher_contract.hpp"
#include "tests/platform/contract/log_contract.hpp"
#include "tests/platform/contract/script_runner_contract.hpp"
#include "tests/session/own_home.hpp"
#include "tests/session/service_session.hpp"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

// What opens applications, runs scripts and reports in an X11 session is held to what every desktop
// does. The applications are programs that write down what they were started with.

namespace orvel::contract {
namespace {

namespace fs = std::filesystem;
using test::OpenServices;
using test::OwnHome;

using Arguments = std::vector<std::string>;

/// An application of the desktop that writes down each of its starts.
class RecordingApplication {
public:
    RecordingApplication(const std::string& id, const std::string& name, const std::string& entry)
        : folder_(OwnHome::get().path() / id) {
        fs::create_directories(folder_);
        const fs::path program = folder_ / "program";
        std::ofstream(program) << "#!/bin/sh\nnew=$(mktemp '" << folder_.string()
                               << "/new.XXXXXX')\nfor each; do printf '%s\\0' \"$each\"; done "
                                  ">\"$new\"\nmv \"$new\" \"${new%/*}/start.${new##*.}\"\n";
        fs::permissions(program, fs::perms::owner_all);
        const fs::path entries = OwnHome::get().data() / "applications";
        fs::create_directories(entries);
        path_ = entries / (id + ".desktop");
        std::ofstream(path_) << "[Desktop Entry]\nType=Application\nName=" << name
                             << "\nExec=" << program.string() << entry << '\n';
    }

    [[nodiscard]] std::string path() const { return path_.string(); }
    [[nodiscard]] std::vector<Arguments> starts() const {
        std::vector<Arguments> starts;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            if (!entry.path().filename().string().starts_with("start.")) continue;
            auto& arguments = starts.emplace_back();
            std::ifstream file(entry.path());
            for (std::string each; std::getline(file, each, '\0');) arguments.push_back(each);
        }
        return starts;
    }
    void forget() const {
        for (const auto& entry : fs::directory_iterator(folder_)) {
            if (entry.path().filename() != "program") fs::remove(entry.path());
        }
    }

private:
    fs::path folder_;
    fs::path path_;
};

/// The desktop and what is installed there, the applications first: they are read once.
struct World {
    World() {
        fs::create_directories(OwnHome::get().path() / "Desktop");
        fs::create_directories(OwnHome::get().config());
        std::ofstream(OwnHome::get().config() / "mimeapps.list")
            << "[Default Applications]\nx-scheme-handler/https=contract-browser.desktop\n"
               "inode/directory=contract-files.desktop\n";
    }

    RecordingApplication notes{"contract-notes", "Contract Notes", " %F"};
    RecordingApplication browser{"contract-browser", "Contract Browser",
                                 " %u\nMimeType=x-scheme-handler/https;"};
    RecordingApplication files{"contract-files", "Contract Files",
                               " %F\nMimeType=inode/directory;\nCategories=FileManager;"};
    rig::EmbeddedDesktop desktop;
};

World& world() {
    static World world;
    return world;
}

/// Standard output of this process goes into a file while this lives.
class CapturedOutput {
public:
    CapturedOutput() {
        std::fflush(stdout);
        ::dup2(::fileno(file_), STDOUT_FILENO);
    }
    ~CapturedOutput() {
        std::fflush(stdout);
        ::dup2(before_, STDOUT_FILENO);
        ::close(before_);
        std::fclose(file_);
    }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    [[nodiscard]] std::string text() const {
        std::fflush(stdout);
        std::string text(4096, '\0');
        text.resize(static_cast<std::size_t>(
            std::max<ssize_t>(0, ::pread(::fileno(file_), text.data(), text.size(), 0))));
        return text;
    }

private:
    int before_ = ::dup(STDOUT_FILENO);
    std::FILE* file_ = std::tmpfile();
};

class X11Harness {
public:
    X11Harness()
        : bus_("DBUS_SESSION_BUS_ADDRESS",
               world().desktop.environment().at("DBUS_SESSION_BUS_ADDRESS")) {
        for (const auto* application : {&world().notes, &world().browser, &world().files}) {
            application->forget();
        }
        services_.emplace(world().desktop);
    }

    AccessibilityPermission& permission() { return permission_; }
    static bool withhold() { return false; }
    static int prompts() { return 0; }

    Log& log() {
        output_.emplace();
        return log_;
    }
    std::vector<std::string> lines() {
        std::istringstream text(output_->text());
        output_.reset();
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }
    static void onAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }

    Result<std::string> run(std::string_view source) {
        std::optional<Result<std::string>> result;
        std::atomic<bool> isDone = false;
        std::thread thread([&] {
            result = (*services_)->scriptRunner().run(source);
            isDone = true;
        });
        EXPECT_TRUE(runUntil([&] { return isDone.load(); }));
        thread.join();
        return *std::move(result);
    }
    static std::string folderScript() { return std::string(scripts::kFrontFinderFolder); }
    static std::string folderAddress() {
        return "file://" + (OwnHome::get().path() / "Desktop").string() + '/';
    }
    static void knowsNoScript(const std::string&) {}

    Launcher& launcher() { return (*services_)->launcher(); }
    static std::string applicationPath() { return world().notes.path(); }
    static std::string applicationName() { return "Contract Notes"; }
    std::vector<Arguments> starts(std::size_t count) { return startsOf(world().notes, count); }
    static std::string file(const std::string& name) {
        const fs::path folder = OwnHome::get().path() / "some files";
        fs::create_directories(folder);
        std::ofstream(folder / name) << "text";
        return (folder / name).string();
    }
    static void refusesPath(const std::string& path) { EXPECT_FALSE(fs::exists(path)); }
    bool isFolderShown(const std::string& path) {
        return startsOf(world().files, 1) == std::vector<Arguments>{{path}};
    }
    std::vector<std::string> urls(std::size_t count) {
        std::vector<std::string> urls;
        for (const auto& arguments : startsOf(world().browser, count)) {
            urls.insert(urls.end(), arguments.begin(), arguments.end());
        }
        return urls;
    }
    bool runUntil(const std::function<bool()>& isDone) {
        return bool(test::eventually(*services_, isDone, testing::Eq(true)));
    }

private:
    std::vector<Arguments> startsOf(const RecordingApplication& application, std::size_t count) {
        EXPECT_TRUE(test::eventually(
            *services_, [&] { return application.starts().size(); }, testing::Ge(count)));
        return application.starts();
    }

    test::ScopedVariable bus_;
    x11::X11AccessibilityPermission permission_;
    x11::X11Log log_;
    std::optional<CapturedOutput> output_;
    std::optional<OpenServices> services_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, AccessibilityPermissionContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, LauncherContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, LogContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, ScriptRunnerContract, X11Harness);

}  // namespace
}  // namespace orvel::contract
