#include "platform/base/json.hpp"
#include "platform/memory/memory_desktop.hpp"
#include "tests/platform/contract/accessibility_permission_contract.hpp"
#include "tests/platform/contract/app_control_contract.hpp"
#include "tests/platform/contract/caps_lock_contract.hpp"
#include "tests/platform/contract/essentials_contract.hpp"
#include "tests/platform/contract/event_poster_contract.hpp"
#include "tests/platform/contract/haptics_contract.hpp"
#include "tests/platform/contract/launcher_contract.hpp"
#include "tests/platform/contract/log_contract.hpp"
#include "tests/platform/contract/script_runner_contract.hpp"
#include "tests/platform/contract/status_bar_contract.hpp"
#include "tests/platform/contract/workspace_contract.hpp"
#include "tests/support/event_builders.hpp"

#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

// The services of the desktop in memory that only tell what they were asked for: their effects are
// what everybody else can see of them.

namespace orvel::contract {
namespace {

class MemoryHarness {
public:
    AccessibilityPermission& permission() { return desk_.accessibilityPermission; }
    bool withhold() {
        desk_.world.isTrusted = false;
        return true;
    }
    int prompts() const { return static_cast<int>(effects("permission").size()); }

    AppControl& control() { return desk_.appControl; }
    bool wasAskedToEnd() const { return !effects("terminate").empty(); }

    Essentials& essentials() { return desk_.essentials; }

    CapsLock& capsLock() { return desk_.capsLock; }
    bool isLocked() const { return *effects("capsLock").back().asBool(); }

    Haptics& haptics() { return desk_.haptics; }
    int patterns() const { return static_cast<int>(effects("haptic").size()); }

    Log& log() { return desk_.log; }
    std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (const Json& line : effects("log")) lines.push_back(*line.asString());
        return lines;
    }
    static void onAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }

    EventPoster& poster() {
        static_cast<void>(desk_.eventTap.create({.mask = ~EventMask{0}}, [this](Event& event) {
            marks_.push_back(event.userData);
            return EventVerdict::pass;
        }));
        desk_.eventTap.enable();
        return desk_.eventPoster;
    }
    std::vector<Posted> posted(std::size_t /*count*/) const {
        std::vector<Posted> all;
        for (const Json& effect : effects("post")) {
            const std::string type = *effect.member("type")->asString();
            if (type == "flagsChanged") continue;
            const Json* data = effect.member("data1");
            all.push_back(data == nullptr ? Posted{type == "keyDown", integer(effect, "key")}
                                          : media(*data->asInteger()));
        }
        return all;
    }
    EventFlags flagsOf(std::size_t index) const {
        return static_cast<EventFlags>(integer(effects("post")[index], "flags"));
    }
    void type(KeyCode keyCode) {
        desk_.eventTap.deliver(test::keyDown(keyCode));
        desk_.eventTap.deliver(test::keyUp(keyCode));
    }
    std::vector<std::int64_t> marks() const { return marks_; }

    ScriptRunner& scripts() { return desk_.scriptRunner; }
    Result<std::string> run(std::string_view source) { return scripts().run(source); }
    std::string folderScript() {
        desk_.world.scripts.push_back({"URL of desktop", folderAddress(), std::nullopt});
        return "tell application \"Finder\" to return URL of desktop";
    }
    static std::string folderAddress() { return "file:///Users/user/Desktop/"; }
    void knowsNoScript(const std::string& source) {
        desk_.world.scripts.push_back({source, {}, "syntax error"});
    }

    Launcher& launcher() { return desk_.launcher; }
    static std::string applicationPath() { return "/Applications/Notes.app"; }
    static std::string applicationName() { return "Notes"; }
    std::vector<std::vector<std::string>> starts(std::size_t /*count*/) const {
        std::vector<std::vector<std::string>> starts;
        for (const Json& effect : effects("openApp")) {
            const Json* path = effect.member("path");
            const Json* name = effect.member("name");
            const bool isOurs = path != nullptr ? *path->asString() == applicationPath()
                                                : *name->asString() == applicationName();
            if (isOurs) starts.emplace_back();
        }
        for (const Json& effect : effects("openFiles")) {
            if (*effect.member("appPath")->asString() != applicationPath()) continue;
            starts.push_back(strings(*effect.member("paths")));
        }
        return starts;
    }
    static std::string file(const std::string& name) { return "/Users/user/folder/" + name; }
    void refusesPath(std::string path) {
        desk_.world.launchErrors.push_back({std::move(path), {}, "no such application"});
    }
    bool isFolderShown(const std::string& path) const {
        const auto shown = effects("revealInFinder");
        return shown.size() == 1 && *shown[0].member("root")->asString() == path;
    }
    std::vector<std::string> urls(std::size_t /*count*/) const {
        std::vector<std::string> urls;
        for (const Json& url : effects("openURL")) urls.push_back(*url.asString());
        return urls;
    }
    bool runUntil(const std::function<bool()>& isDone) {
        desk_.runLoop.drain();
        return isDone();
    }

    StatusBar& bar() { return desk_.statusBar; }
    ScreenRect screen() const { return desk_.world.screens.front().frame; }
    void waitForItem() {}
    void click(StatusItemButton button) { desk_.statusBar.click({.button = button}); }

    Workspace& workspace() { return desk_.workspace; }
    InstalledExample installed() {
        desk_.world.installed.push_back({"com.example.notes", "/Applications/Notes.app", "Notes"});
        return {"com.example.notes", "/Applications/Notes.app", "Notes"};
    }
    ProcessId startApplication() {
        RunningApplication application;
        application.pid = ++lastPid_;
        application.bundleId = "com.example.app" + std::to_string(lastPid_);
        application.name = "App";
        desk_.world.apps.push_back(application);
        bringToFront(lastPid_);
        return lastPid_;
    }
    void bringToFront(ProcessId pid) {
        for (RunningApplication& application : desk_.world.apps) {
            application.isActive = application.pid == pid;
            if (application.isActive) desk_.world.frontmost = application.bundleId;
        }
    }
    void end(ProcessId pid) {
        std::erase_if(desk_.world.apps, [pid](const auto& each) { return each.pid == pid; });
        desk_.world.frontmost.reset();
    }
    bool wasActivated(ProcessId pid) const {
        const auto effect = effects("activateApp").back();
        return integer(effect, "pid") == pid;
    }
    std::vector<ProcessId> askedToEnd() const {
        std::vector<ProcessId> asked;
        for (const Json& effect : effects("terminateApp")) {
            asked.push_back(static_cast<ProcessId>(integer(effect, "pid")));
        }
        return asked;
    }

private:
    /// The values of the effects of that name, in order.
    std::vector<Json> effects(std::string_view name) const {
        std::vector<Json> found;
        std::istringstream lines(desk_.effects.text());
        for (std::string line; std::getline(lines, line);) {
            const auto effect = parseJson(line);
            if (const Json* value = effect.value().member(name)) found.push_back(*value);
        }
        return found;
    }
    static std::int64_t integer(const Json& effect, std::string_view name) {
        return *effect.member(name)->asInteger();
    }
    static std::vector<std::string> strings(const Json& array) {
        std::vector<std::string> texts;
        for (const Json& each : *array.asArray()) texts.push_back(*each.asString());
        return texts;
    }
    static Posted media(std::int64_t data) { return {(data >> 8 & 0xF) == 0xA, data >> 16, true}; }

    memory::MemoryDesktop desk_;
    std::vector<std::int64_t> marks_;
    ProcessId lastPid_ = 100;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, AccessibilityPermissionContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, AppControlContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, CapsLockContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EssentialsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EventPosterContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, HapticsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, LauncherContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, LogContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ScriptRunnerContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, StatusBarContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WorkspaceContract, MemoryHarness);

}  // namespace
}  // namespace orvel::contract
