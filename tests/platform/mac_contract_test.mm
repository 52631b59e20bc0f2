#include "platform/event_poster.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"
#include "platform/macos/mac_panels.hpp"
#include "platform/macos/mac_status_button.hpp"
#include "platform/status_bar.hpp"
#include "tests/macos/fakes/fake_mac.hpp"
#include "tests/macos/run/mac_test.hpp"
#include "tests/platform/contract/accessibility_windows_contract.hpp"
#include "tests/platform/contract/event_monitors_contract.hpp"
#include "tests/platform/contract/event_tap_contract.hpp"
#include "tests/platform/contract/file_system_contract.hpp"
#include "tests/platform/contract/input_state_contract.hpp"
#include "tests/platform/contract/login_items_contract.hpp"
#include "tests/platform/contract/native_menu_contract.hpp"
#include "tests/platform/contract/notifications_contract.hpp"
#include "tests/platform/contract/panels_contract.hpp"
#include "tests/platform/contract/pasteboard_contract.hpp"
#include "tests/platform/contract/preference_store_contract.hpp"
#include "tests/platform/contract/run_loop_contract.hpp"
#include "tests/platform/contract/screens_contract.hpp"
#include "tests/platform/contract/task_runner_contract.hpp"
#include "tests/platform/contract/text_caret_contract.hpp"
#include "tests/platform/contract/window_images_contract.hpp"
#include "tests/platform/contract/window_list_contract.hpp"
#include "tests/support/scratch_home.hpp"

#import <AppKit/AppKit.h>

#include <bit>
#include <chrono>

// The macOS back end over the fakes is held to what the other desktops do.

namespace orvel::contract {
namespace {

using Clock = std::chrono::steady_clock;

class NoContents final : public macos::PanelContents {
public:
    CFTypeRef viewOf(PanelId, double) override { return nullptr; }
};

struct FreshMac {
    FreshMac() {
        fake::reset();
        NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
        for (NSString* key in [defaults dictionaryRepresentation]) {
            [defaults removeObjectForKey:key];
        }
    }
};

class MacHarness : FreshMac {
public:
    RunLoop& loop() { return *loop_; }
    bool runUntil(const std::function<bool()>& isDone) { return fake::runUntil(isDone); }
    void runFor(Duration duration) {
        const auto end = Clock::now() + duration;
        fake::runUntil([end] { return Clock::now() >= end; });
    }
    void settle() { fake::runDue(); }

    PreferenceStore& store() { return *store_; }
    void writeFromOutside(std::string_view key, std::optional<PreferenceValue> value) {
        const auto other = macos::makePreferenceStore();
        const PreferenceHandle handle = other->handle(key);
        value ? other->set(handle, *value) : other->remove(handle);
    }

    FileSystem& files() { return *files_; }
    std::string folder() { return scratch_.path(); }
    std::string unwritableFolder() { return "/proc"; }

    LoginItems& items() { return *items_; }
    void refuse() { fake::world().loginItemError = "not permitted"; }

    TaskRunner& tasks() { return *tasks_; }
    Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments) {
        return tasks_->run(path, arguments);
    }
    // The machine's own programs do as they always do.
    void hasProgram(const std::string&, const std::vector<std::string>&, const std::string&) {}
    void hasNoProgram(const std::string&) {}

    EventTap& tap() { return *tap_; }
    InputState& state() { return *input_; }
    void send(const Event& event) {
        const int keyCode = static_cast<int>(event.keyCode);
        const bool isModifier = event.type == EventType::flagsChanged;
        if (isModifier) fake::world().hidFlags = event.flags;
        const bool isDown =
            isModifier ? event.flags != flag::none : event.type == EventType::keyDown;
        isDown ? static_cast<void>(fake::world().keysDown.insert(keyCode))
               : static_cast<void>(fake::world().keysDown.erase(keyCode));
        fake::sendKey(
            {.type = static_cast<int>(event.type), .keyCode = keyCode, .flags = event.flags});
    }
    void switchOff() { fake::switchTapsOff(fake::SwitchOff::silently); }
    void movePointer(ScreenPoint point) {
        fake::world().pointerX = point.x;
        fake::world().pointerY = point.y;
    }

    Pasteboard& pasteboard() { return *pasteboard_; }
    void copyText(std::string text) { copy("public.utf8-plain-text", std::move(text)); }
    void copyPicture(int width, int height) {
        copy("public.tiff", std::to_string(width) + "x" + std::to_string(height));
    }
    std::string pictureFile() {
        fake::world().imageFiles["/tmp/a.tiff"] = {64, 48};
        return "/tmp/a.tiff";
    }

    AccessibilityWindows& windows() { return *windows_; }
    WindowList& list() { return *list_; }
    WindowImages& images() { return *images_; }
    ProcessId open(const std::string& title, AxRect frame) {
        const int pid = ++lastPid_;
        fake::world().applications[pid].windows = {{.title = title,
                                                    .x = frame.x,
                                                    .y = frame.y,
                                                    .width = frame.width,
                                                    .height = frame.height}};
        fake::world().serverWindows.insert(fake::world().serverWindows.begin(),
                                           {.number = static_cast<unsigned>(pid),
                                            .pid = pid,
                                            .name = title,
                                            .x = frame.x,
                                            .y = frame.y,
                                            .width = frame.width,
                                            .height = frame.height,
                                            .captureWidth = static_cast<int>(frame.width)});
        focus(pid);
        return pid;
    }
    void focus(ProcessId pid) { fake::world().applications[pid].focusedWindow = 0; }
    void minimise(ProcessId pid) {
        for (fake::ServerWindow& window : fake::world().serverWindows) {
            if (window.pid == pid) window.isOnScreen = false;
        }
    }
    void close(ProcessId pid) {
        fake::world().applications.erase(pid);
        std::erase_if(fake::world().serverWindows,
                      [pid](const fake::ServerWindow& window) { return window.pid == pid; });
    }

    Panels& panels() { return *panels_; }
    Screens& screens() { return *screens_; }

    EventMonitors& monitors() { return *monitors_; }
    void click(EventMask type, std::optional<PanelId> panel) {
        const int number = static_cast<int>(std::countr_zero(type));
        const auto shown = panel ? panels_->create({.id = *panel}) : nullptr;
        const void* window = panel ? macos::windowOfPanel(*panel) : nullptr;
        fake::sendToMonitors(panel.has_value(), number, 0, window);
    }
    void pressKey(KeyCode key, std::optional<PanelId> panel) {
        constexpr int kKeyDown = 10;
        const auto shown = panel ? panels_->create({.id = *panel}) : nullptr;
        const void* window = panel ? macos::windowOfPanel(*panel) : nullptr;
        fake::sendToMonitors(panel.has_value(), kKeyDown, key, window);
    }

    Notifications& notifications() { return *notifications_; }
    void resignKey(PanelId panel) {
        const auto shown = panels_->create({.id = panel});
        fake::postNotification(fake::Center::application, "NSWindowDidResignKeyNotification",
                               macos::windowOfPanel(panel));
    }
    void resignActive() {
        fake::postNotification(fake::Center::application,
                               "NSApplicationDidResignActiveNotification");
    }

    NativeMenus& menus() {
        statusBar_->createItem({}, [](const StatusItemClick&) {});
        return *menus_;
    }
    void choose(std::string_view title) {
        fake::world().chosenTitle = std::string(title);
        fake::runDue();
    }
    void dismiss() { fake::runDue(); }

    TextCaret& caret() { return *caret_; }
    AxRect focusText() {
        fake::world().caret = {.x = 120, .y = 130, .width = 0, .height = 18};
        return {100, 100, 400, 300};
    }
    AxRect moveText(double dx, double dy) {
        fake::world().caret->x += dx;
        fake::world().caret->y += dy;
        return {100 + dx, 100 + dy, 400, 300};
    }
    void focusNoText() { fake::world().caret.reset(); }

private:
    static void copy(const std::string& type, std::string contents) {
        fake::world().pasteboard = {{type, std::move(contents)}};
        ++fake::world().pasteboardCount;
    }

    NoContents contents_;
    macos::LogLines log_;
    test::ScratchFolder scratch_;
    macos::StatusButton statusButton_;
    std::unique_ptr<RunLoop> loop_ = macos::makeRunLoop();
    std::unique_ptr<PreferenceStore> store_ = macos::makePreferenceStore();
    std::unique_ptr<FileSystem> files_ = macos::makeFileSystem();
    std::unique_ptr<LoginItems> items_ = macos::makeLoginItems();
    std::unique_ptr<TaskRunner> tasks_ = macos::makeTaskRunner();
    std::unique_ptr<EventPoster> poster_ = macos::makeEventPoster();
    std::unique_ptr<InputState> input_ = macos::makeInputState();
    std::unique_ptr<EventTap> tap_ = macos::makeEventTap(*poster_, *input_, log_);
    std::unique_ptr<Pasteboard> pasteboard_ = macos::makePasteboard();
    std::unique_ptr<AccessibilityWindows> windows_ = macos::makeAccessibilityWindows();
    std::unique_ptr<WindowList> list_ = macos::makeWindowList();
    std::unique_ptr<WindowImages> images_ = macos::makeWindowImages();
    std::unique_ptr<Panels> panels_ = macos::makePanels(contents_);
    std::unique_ptr<Screens> screens_ = macos::makeScreens();
    std::unique_ptr<TextCaret> caret_ = macos::makeTextCaret();
    std::unique_ptr<EventMonitors> monitors_ = macos::makeEventMonitors();
    std::unique_ptr<Notifications> notifications_ = macos::makeNotifications();
    std::unique_ptr<StatusBar> statusBar_ = macos::makeStatusBar(statusButton_);
    std::unique_ptr<NativeMenus> menus_ = macos::makeNativeMenus(statusButton_);
    int lastPid_ = 100;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, RunLoopContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, PreferenceStoreContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, FileSystemContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, TaskRunnerContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventTapContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, InputStateContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, PasteboardContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, AccessibilityWindowsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, WindowListContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, WindowImagesContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, PanelsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ScreensContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, EventMonitorsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, NotificationsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LoginItemsContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, NativeMenuContract, MacHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Mac, TextCaretContract, MacHarness);

}  // namespace
}  // namespace orvel::contract
