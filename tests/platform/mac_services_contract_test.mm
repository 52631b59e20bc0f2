#include "platform/event_tap.hpp"
#include "platform/input_state.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_status_button.hpp"
#include "platform/run_loop.hpp"
#include "tests/macos/fakes/fake_mac.hpp"
#include "tests/macos/run/mac_test.hpp"
#include "tests/platform/contract/accessibility_permission_contract.hpp"
#include "tests/platform/contract/app_control_contract.hpp"
#include "tests/platform/contract/caps_lock_contract.hpp"
#include "tests/platform/contract/essentials_contract.hpp"
#include "tests/platform/contract/event_poster_contract.hpp"
#include "tests/platform/contract/haptics_contract.hpp"
#include "tests/platform/contract/input_sources_contract.hpp"
#include "tests/platform/contract/launcher_contract.hpp"
#include "tests/platform/contract/log_contract.hpp"
#include "tests/platform/contract/script_runner_contract.hpp"
#include "tests/platform/contract/status_bar_contract.hpp"
#include "tests/platform/contract/workspace_contract.hpp"
#include "tests/support/scratch_home.hpp"

#import <AppKit/AppKit.h>

#include <fcntl.h>
#include <unistd.h>
#include <atomic>
#include <cstdio>
#include <fstream>

// The macOS back end over the fakes is held to what the other desktops do: applications, input that
// leaves, scripts, reports, and what this program is to the system.

namespace orvel::contract {
namespace {

/// Does `work` on another thread, as the system's queues do; returns when it is done.
void doElsewhere(const std::function<void()>& work) {
    std::atomic<bool> isDone = false;
    std::atomic<bool>* done = &isDone;
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
      work();
      *done = true;
    });
    ASSERT_TRUE(fake::runUntil([done] { return done->load(); }));
}

/// What is written to the standard output meanwhile.
class OutputFile {
public:
    explicit OutputFile(std::string path) : path_(std::move(path)) {
        std::fflush(stdout);
        const int file = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
        ::dup2(file, STDOUT_FILENO);
        ::close(file);
    }
    ~OutputFile() {
        std::fflush(stdout);
        ::dup2(before_, STDOUT_FILENO);
        ::close(before_);
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        std::ifstream file(path_);
        for (std::string line; std::getline(file, line);) lines.push_back(line);
        return lines;
    }

private:
    std::string path_;
    int before_ = ::dup(STDOUT_FILENO);
};

struct FreshFakes {
    FreshFakes() { fake::reset(); }
};

class MacHarness : FreshFakes {
public:
    AccessibilityPermission& permission() { return *permission_; }
    bool withhold() {
        fake::world().session.isTrusted = false;
        return true;
    }
    int prompts() const { return fake::world().trustPrompts; }

    AppControl& control() { return *control_; }
    bool wasAskedToEnd() const { return fake::world().terminations > 0; }

    Essentials& essentials() { return *essentials_; }

    CapsLock& capsLock() { return *capsLock_; }
    bool isLocked() const { return fake::world().capsLock.value_or(false); }

    InputSources& sources() {
        fake::world().inputSources = {{.id = "english", .isAscii = true},
                                      {.id = "chinese", .isAscii = false}};
        fake::world().currentInputSource = "english";
        return *sources_;
    }
    void selectFromOutside(const std::string& id) { fake::world().currentInputSource = id; }
    bool settlesOn(const std::string& id) {
        fake::runDue();
        const auto current = sources_->current();
        return current && current->id == id;
    }

    Haptics& haptics() { return *haptics_; }
    int patterns() const { return fake::world().hapticTaps; }

    Log& log() {
        output_.emplace(scratch_.path() + "/output");
        return *log_;
    }
    std::vector<std::string> lines() const { return output_->lines(); }
    static void onAnotherThread(const std::function<void()>& work) { doElsewhere(work); }

    EventPoster& poster() {
        EXPECT_TRUE(tap_->create({.mask = ~EventMask{0}}, [this](Event& event) {
            marks_.push_back(event.userData);
            return EventVerdict::pass;
        }));
        tap_->enable();
        return *poster_;
    }
    std::vector<Posted> posted(std::size_t) const {
        std::vector<Posted> all;
        for (const fake::PostedEvent& event : fake::world().posted) {
            const auto type = static_cast<EventType>(event.type);
            if (type == EventType::flagsChanged) continue;
            const bool isMedia = type == EventType::systemDefined;
            all.push_back(isMedia ? Posted{(event.data1 >> 8 & 0xF) == 0xA, event.data1 >> 16, true}
                                  : Posted{type == EventType::keyDown, event.keyCode});
        }
        return all;
    }
    EventFlags flagsOf(std::size_t index) const { return fake::world().posted[index].flags; }
    void type(KeyCode keyCode) {
        for (const int type : {10, 11})
            fake::sendKey({.type = type, .keyCode = static_cast<int>(keyCode)});
    }
    /// What is posted where the hardware's events enter passes the taps of the session.
    std::vector<std::int64_t> marks() {
        for (; passed_ < fake::world().posted.size(); ++passed_) {
            const fake::PostedEvent& event = fake::world().posted[passed_];
            fake::sendKey({.type = event.type,
                           .keyCode = event.keyCode,
                           .flags = event.flags,
                           .userData = event.userData});
        }
        return marks_;
    }

    Result<std::string> run(std::string_view source) {
        Result<std::string> outcome = Failure{"did not run"};
        Result<std::string>* box = &outcome;
        doElsewhere([this, box, source = std::string(source)] { *box = scripts_->run(source); });
        return outcome;
    }
    std::string folderScript() {
        const std::string script = "tell application \"Finder\" to return URL of desktop";
        fake::world().script = [script](const std::string& source) {
            if (source == script) return fake::ScriptOutcome{.text = folderAddress()};
            return fake::ScriptOutcome{.error = "syntax error"};
        };
        return script;
    }
    static std::string folderAddress() { return "file:///Users/user/Desktop/"; }
    void knowsNoScript(const std::string&) { folderScript(); }

    Launcher& launcher() {
        fake::world().existingFiles.insert(applicationPath());
        return *launcher_;
    }
    static std::string applicationPath() { return "/Applications/Notes.app"; }
    static std::string applicationName() { return "Notes"; }
    std::vector<std::vector<std::string>> starts(std::size_t) const {
        std::vector<std::vector<std::string>> starts;
        for (const fake::Opening& opening : fake::world().openings) {
            if (opening.application == applicationPath()) starts.push_back(opening.files);
        }
        return starts;
    }
    static std::string file(const std::string& name) { return "/Users/user/folder/" + name; }
    void refusesPath(const std::string& path) { fake::world().refusedApplications.insert(path); }
    bool isFolderShown(const std::string& path) const {
        fake::runDue();
        return fake::world().launched == std::vector{"reveal  in " + path};
    }
    std::vector<std::string> urls(std::size_t) const {
        std::vector<std::string> urls;
        for (const std::string& line : fake::world().launched) {
            if (line.starts_with("url ")) urls.push_back(line.substr(4));
        }
        return urls;
    }
    bool runUntil(const std::function<bool()>& isDone) { return fake::runUntil(isDone); }

    StatusBar& bar() { return *statusBar_; }
    ScreenRect screen() const {
        const fake::Screen& screen = fake::world().screens.front();
        return {screen.x, screen.y, screen.width, screen.height};
    }
    void waitForItem() {}
    void click(StatusItemButton button) {
        fake::clickStatusItem(button == StatusItemButton::left ? 2 : 4, 0);
    }

    Workspace& workspace() { return *workspace_; }
    InstalledExample installed() {
        fake::world().installed["com.example.notes"] = applicationPath();
        return {"com.example.notes", applicationPath(), "Notes"};
    }
    ProcessId startApplication() {
        const int pid = ++lastPid_;
        fake::world().applications[pid] = {.bundleId = "com.example.app" + std::to_string(pid),
                                           .name = "App"};
        bringToFront(pid);
        return pid;
    }
    void bringToFront(ProcessId pid) {
        for (auto& [each, application] : fake::world().applications)
            application.isActive = each == pid;
        fake::world().frontmost = pid;
        tell("NSWorkspaceDidActivateApplicationNotification", pid);
    }
    void end(ProcessId pid) {
        const CFTypeRef application = runningApplication(pid);
        fake::world().applications.erase(pid);
        if (fake::world().frontmost == pid) fake::world().frontmost = 0;
        fake::postNotification(fake::Center::workspace,
                               "NSWorkspaceDidTerminateApplicationNotification", nullptr,
                               {{"NSWorkspaceApplicationKey", application}});
    }
    bool wasActivated(ProcessId pid) const {
        return !fake::world().applications.at(pid).activations.empty();
    }
    std::vector<ProcessId> askedToEnd() const {
        std::vector<ProcessId> asked;
        for (const auto& [pid, application] : fake::world().applications) {
            if (application.isTerminated) asked.push_back(pid);
        }
        return asked;
    }

private:
    static CFTypeRef runningApplication(ProcessId pid) {
        return (CFTypeRef)(void*)[NSRunningApplication runningApplicationWithProcessIdentifier:pid];
    }
    static void tell(const std::string& name, ProcessId pid) {
        fake::postNotification(fake::Center::workspace, name, nullptr,
                               {{"NSWorkspaceApplicationKey", runningApplication(pid)}});
    }

    test::ScratchFolder scratch_;
    macos::LogLines quiet_;
    macos::StatusButton statusButton_;
    std::unique_ptr<AccessibilityPermission> permission_ = macos::makeAccessibilityPermission();
    std::unique_ptr<AppControl> control_ = macos::makeAppControl();
    std::unique_ptr<CapsLock> capsLock_ = macos::makeCapsLock();
    std::unique_ptr<InputSources> sources_ = macos::makeInputSources();
    std::unique_ptr<Haptics> haptics_ = macos::makeHaptics();
    std::unique_ptr<Log> log_ = macos::makeLog(false);
    std::optional<OutputFile> output_;
    std::unique_ptr<EventPoster> poster_ = macos::makeEventPoster();
    std::unique_ptr<InputState> input_ = macos::makeInputState();
    std::unique_ptr<EventTap> tap_ = macos::makeEventTap(*poster_, *input_, quiet_);
    std::unique_ptr<Essentials> essentials_ = macos::makeEssentials(*tap_);
    std::vector<std::int64_t> marks_;
    std::size_t passed_ = 0;
    std::unique_ptr<RunLoop> loop_ = macos::makeRunLoop();
    std::unique_ptr<ScriptRunner> scripts_ = macos::makeScriptRunner();
    std::unique_ptr<Launcher> launcher_ = macos::makeLauncher(*loop_);
    std::unique_ptr<StatusBar> statusBar_ = macos::makeStatusBar(statusButton_);
    std::unique_ptr<Workspace> workspace_ = macos::makeWorkspace();
    int lastPid_ = 100;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, AccessibilityPermissionContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, AppControlContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, CapsLockContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EssentialsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventPosterContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, HapticsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, InputSourcesContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LauncherContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LogContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ScriptRunnerContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, StatusBarContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, WorkspaceContract, MacHarness);

}  // namespace
}  // namespace orvel::contract
