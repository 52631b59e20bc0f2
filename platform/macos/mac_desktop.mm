#include "platform/macos/mac_desktop.hpp"

#include "platform/accessibility_permission.hpp"
#include "platform/accessibility_windows.hpp"
#include "platform/app_control.hpp"
#include "platform/caps_lock.hpp"
#include "platform/essentials.hpp"
#include "platform/event_monitors.hpp"
#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/file_system.hpp"
#include "platform/haptics.hpp"
#include "platform/input_sources.hpp"
#include "platform/input_state.hpp"
#include "platform/launcher.hpp"
#include "platform/log.hpp"
#include "platform/login_items.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_power_dry_run.hpp"
#include "platform/macos/mac_status_button.hpp"
#include "platform/native_menu.hpp"
#include "platform/notifications.hpp"
#include "platform/pasteboard.hpp"
#include "platform/preference_store.hpp"
#include "platform/run_loop.hpp"
#include "platform/screens.hpp"
#include "platform/script_runner.hpp"
#include "platform/status_bar.hpp"
#include "platform/task_runner.hpp"
#include "platform/text_caret.hpp"
#include "platform/window_images.hpp"
#include "platform/window_list.hpp"
#include "platform/workspace.hpp"

namespace orvel::macos {

namespace {

class OwningDesktop final : public MacDesktop {
public:
    OwningDesktop(PanelContents& contents, const DesktopOptions& options)
        : log_(makeLog(options.keepsTrace)),
          panels_(makePanels(contents)),
          dryRun_(options.isPowerDryRun ? makeDryRun() : nullptr) {}

    [[nodiscard]] Desktop& ports() override { return ports_; }
    [[nodiscard]] Desktop portsWith(const RecordedPorts& recorded) override;

private:
    std::unique_ptr<ScriptRunner> makeDryRun() {
        return std::make_unique<PowerDryRun>(*scriptRunner_,
                                             [this](std::string_view line) { log_->line(line); });
    }

    StatusButton statusButton_;
    std::unique_ptr<RunLoop> runLoop_ = makeRunLoop();
    std::unique_ptr<Log> log_;
    std::unique_ptr<Panels> panels_;
    std::unique_ptr<AccessibilityPermission> accessibilityPermission_ =
        makeAccessibilityPermission();
    std::unique_ptr<AccessibilityWindows> accessibilityWindows_ = makeAccessibilityWindows();
    std::unique_ptr<AppControl> appControl_ = makeAppControl();
    std::unique_ptr<CapsLock> capsLock_ = makeCapsLock();
    std::unique_ptr<EventMonitors> eventMonitors_ = makeEventMonitors();
    std::unique_ptr<EventPoster> eventPoster_ = makeEventPoster();
    std::unique_ptr<InputState> inputState_ = makeInputState();
    std::unique_ptr<EventTap> eventTap_ = makeEventTap(*eventPoster_, *inputState_, *log_);
    std::unique_ptr<Essentials> essentials_ = makeEssentials(*eventTap_);
    std::unique_ptr<FileSystem> fileSystem_ = makeFileSystem();
    std::unique_ptr<Haptics> haptics_ = makeHaptics();
    std::unique_ptr<InputSources> inputSources_ = makeInputSources();
    std::unique_ptr<Launcher> launcher_ = makeLauncher(*runLoop_);
    std::unique_ptr<LoginItems> loginItems_ = makeLoginItems();
    std::unique_ptr<NativeMenus> nativeMenus_ = makeNativeMenus(statusButton_);
    std::unique_ptr<Notifications> notifications_ = makeNotifications();
    std::unique_ptr<Pasteboard> pasteboard_ = makePasteboard();
    std::unique_ptr<PreferenceStore> preferenceStore_ = makePreferenceStore();
    std::unique_ptr<Screens> screens_ = makeScreens();
    std::unique_ptr<ScriptRunner> scriptRunner_ = makeScriptRunner();
    std::unique_ptr<StatusBar> statusBar_ = makeStatusBar(statusButton_);
    std::unique_ptr<TaskRunner> taskRunner_ = makeTaskRunner();
    std::unique_ptr<TextCaret> textCaret_ = makeTextCaret();
    std::unique_ptr<WindowImages> windowImages_ = makeWindowImages();
    std::unique_ptr<WindowList> windowList_ = makeWindowList();
    std::unique_ptr<Workspace> workspace_ = makeWorkspace();

    std::unique_ptr<ScriptRunner> dryRun_;

    Desktop ports_ = portsWith({*eventTap_, *eventPoster_, *log_});
};

Desktop OwningDesktop::portsWith(const RecordedPorts& recorded) {
    return {*accessibilityPermission_,
            *accessibilityWindows_,
            *appControl_,
            *capsLock_,
            *essentials_,
            *eventMonitors_,
            recorded.eventPoster,
            recorded.eventTap,
            *fileSystem_,
            *haptics_,
            *inputSources_,
            *inputState_,
            *launcher_,
            recorded.log,
            *loginItems_,
            *nativeMenus_,
            *notifications_,
            *panels_,
            *pasteboard_,
            *preferenceStore_,
            *runLoop_,
            *screens_,
            dryRun_ ? *dryRun_ : *scriptRunner_,
            *statusBar_,
            *taskRunner_,
            *textCaret_,
            *windowImages_,
            *windowList_,
            *workspace_};
}

}  // namespace

std::unique_ptr<MacDesktop> makeDesktop(PanelContents& contents, const DesktopOptions& options) {
    return std::make_unique<OwningDesktop>(contents, options);
}

}  // namespace orvel::macos
