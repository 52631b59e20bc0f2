#include "platform/memory/memory_desktop.hpp"
#include "tests/platform/contract/accessibility_windows_contract.hpp"
#include "tests/platform/contract/event_monitors_contract.hpp"
#include "tests/platform/contract/event_tap_contract.hpp"
#include "tests/platform/contract/file_system_contract.hpp"
#include "tests/platform/contract/input_sources_contract.hpp"
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

#include <algorithm>
#include <span>
#include <string_view>

// The desktop in memory is held to what the real ones do. It comes to rest by being drained.

namespace orvel::contract {
namespace {

/// The acts of the world outside, on the desktop in memory.
class MemoryHarness {
public:
    RunLoop& loop() { return desk_.runLoop; }
    bool runUntil(const std::function<bool()>& isDone) {
        constexpr int attempts = 1000;
        for (int i = 0; i < attempts && !isDone(); ++i) runFor(std::chrono::milliseconds(1));
        return isDone();
    }
    void runFor(Duration duration) {
        settle();
        desk_.runLoop.advance(duration);
    }
    void settle() { desk_.runLoop.drain(); }

    PreferenceStore& store() { return desk_.preferenceStore; }
    void writeFromOutside(std::string_view key, std::optional<PreferenceValue> value) {
        desk_.preferenceStore.writeFromOutside(key, std::move(value));
    }

    FileSystem& files() { return desk_.fileSystem; }
    std::string folder() {
        desk_.world.folders.insert("/Users/user/empty");
        return "/Users/user/empty";
    }
    std::string unwritableFolder() {
        desk_.world.folders.insert("/System");
        desk_.world.unwritable = {"/System"};
        return "/System";
    }

    LoginItems& items() { return desk_.loginItems; }
    void refuse() { desk_.world.loginItemError = "not permitted"; }

    TaskRunner& tasks() { return desk_.taskRunner; }
    Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments) {
        return desk_.taskRunner.run(path, arguments);
    }
    void hasProgram(std::string path, const std::vector<std::string>& arguments,
                    std::string output) {
        for (const std::string& argument : arguments) path += ' ' + argument;
        desk_.world.tasks.push_back({std::move(path), std::move(output), std::nullopt});
    }
    void hasNoProgram(std::string path) {
        desk_.world.tasks.push_back({std::move(path), {}, "no such program"});
    }

    EventTap& tap() { return desk_.eventTap; }
    InputState& state() { return desk_.inputState; }
    void send(const Event& event) {
        desk_.eventTap.deliver(event);
        settle();
    }
    void switchOff() { desk_.eventTap.switchFromOutside(false); }
    void movePointer(ScreenPoint point) { desk_.world.mouse = point; }

    Pasteboard& pasteboard() { return desk_.pasteboard; }
    void copyText(std::string text) { desk_.world.copyFromOutside(std::move(text), std::nullopt); }
    void copyMarked(std::string text, PasteboardMarks marks) {
        desk_.world.copyFromOutside(std::move(text), std::nullopt, marks);
    }
    void copyPicture(int width, int height) {
        desk_.world.copyFromOutside(std::nullopt, memory::PixelSize{width, height});
    }
    std::string pictureFile() {
        const std::string_view standIn = "picture 64x48";
        const auto bytes = std::as_bytes(std::span(standIn));
        desk_.world.files["/Users/user/a.tiff"] = {bytes.begin(), bytes.end()};
        return "/Users/user/a.tiff";
    }

    AccessibilityWindows& windows() { return desk_.accessibilityWindows; }
    WindowList& list() { return desk_.windowList; }
    WindowImages& images() { return desk_.windowImages; }
    ProcessId open(const std::string& title, AxRect frame) {
        memory::WorldWindow window;
        window.info = {++lastNumber_, static_cast<ProcessId>(lastNumber_) + 100, 0, title, frame};
        window.isOnScreen = true;
        window.capturePixelWidth = static_cast<int>(frame.width);
        window.ax = {
            .role = "AXWindow", .title = title, .position = frame.origin(), .size = frame.size()};
        desk_.world.windows.insert(desk_.world.windows.begin(), window);
        return window.info.pid;
    }
    void focus(ProcessId pid) { windowOf(pid).ax->isFocused = true; }
    void minimise(ProcessId pid) {
        windowOf(pid).ax->isMinimized = true;
        windowOf(pid).isOnScreen = false;
    }
    void close(ProcessId pid) {
        std::erase_if(desk_.world.windows,
                      [pid](const auto& window) { return window.info.pid == pid; });
    }

    Panels& panels() { return desk_.panels; }
    Screens& screens() { return desk_.screens; }

    EventMonitors& monitors() { return desk_.eventMonitors; }
    void click(EventMask type, std::optional<PanelId> window) {
        const auto scope = window ? MonitorScope::local : MonitorScope::global;
        desk_.eventMonitors.deliver(scope, {.type = type, .keyCode = 0, .window = window});
    }

    void pressKey(KeyCode key, std::optional<PanelId> window) {
        const auto scope = window ? MonitorScope::local : MonitorScope::global;
        desk_.eventMonitors.deliver(
            scope, {.type = monitor_mask::keyDown, .keyCode = key, .window = window});
    }

    InputSources& sources() {
        desk_.world.inputSources = {{{"english", true, true}, true},
                                    {{"chinese", true, false}, true}};
        desk_.world.currentInputSource = "english";
        return desk_.inputSources;
    }
    void selectFromOutside(const std::string& id) { desk_.world.currentInputSource = id; }
    bool settlesOn(const std::string& id) { return desk_.inputSources.current()->id == id; }

    Notifications& notifications() { return desk_.notifications; }
    void resignKey(PanelId panel) {
        desk_.notifications.post(NotificationName::windowDidResignKey, panel);
    }
    void resignActive() {
        desk_.notifications.post(NotificationName::applicationDidResignActive, std::nullopt);
    }

    NativeMenus& menus() { return desk_.nativeMenus; }
    void choose(std::string_view title) { EXPECT_TRUE(desk_.nativeMenus.choose(title)); }
    void dismiss() { desk_.nativeMenus.dismiss(); }

    TextCaret& caret() { return desk_.textCaret; }
    AxRect focusText() {
        desk_.world.caret = AxRect{120, 130, 0, 18};
        return {100, 100, 400, 300};
    }
    AxRect moveText(double dx, double dy) {
        desk_.world.caret->x += dx;
        desk_.world.caret->y += dy;
        return {100 + dx, 100 + dy, 400, 300};
    }
    void focusNoText() { desk_.world.caret.reset(); }

private:
    memory::WorldWindow& windowOf(ProcessId pid) {
        return *std::find_if(desk_.world.windows.begin(), desk_.world.windows.end(),
                             [pid](const auto& window) { return window.info.pid == pid; });
    }

    memory::MemoryDesktop desk_;
    WindowNumber lastNumber_ = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, RunLoopContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PreferenceStoreContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, FileSystemContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, TaskRunnerContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EventTapContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, InputStateContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PasteboardContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, AccessibilityWindowsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WindowListContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WindowImagesContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PanelsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ScreensContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, EventMonitorsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, InputSourcesContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, NotificationsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, LoginItemsContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, NativeMenuContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, TextCaretContract, MemoryHarness);

}  // namespace
}  // namespace orvel::contract
