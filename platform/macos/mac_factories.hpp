#pragma once

#include "platform/desktop.hpp"

#include <memory>

namespace orvel::macos {

class PanelContents;
class StatusButton;

// One maker for each port; main thread. What a maker is given outlives what it makes.
std::unique_ptr<AccessibilityPermission> makeAccessibilityPermission();
std::unique_ptr<AccessibilityWindows> makeAccessibilityWindows();
std::unique_ptr<AppControl> makeAppControl();
std::unique_ptr<CapsLock> makeCapsLock();
std::unique_ptr<Essentials> makeEssentials(const EventTap& tap);
std::unique_ptr<EventMonitors> makeEventMonitors();
std::unique_ptr<EventPoster> makeEventPoster();
std::unique_ptr<EventTap> makeEventTap(EventPoster& poster, const InputState& input, Log& log);
std::unique_ptr<FileSystem> makeFileSystem();
std::unique_ptr<Haptics> makeHaptics();
std::unique_ptr<InputSources> makeInputSources();
std::unique_ptr<InputState> makeInputState();
std::unique_ptr<Launcher> makeLauncher(RunLoop& runLoop);
/// `keepsTrace`: the user asked for the debug trace file.
std::unique_ptr<Log> makeLog(bool keepsTrace);
std::unique_ptr<LoginItems> makeLoginItems();
std::unique_ptr<NativeMenus> makeNativeMenus(const StatusButton& button);
std::unique_ptr<Notifications> makeNotifications();
std::unique_ptr<Panels> makePanels(PanelContents& contents);
std::unique_ptr<Pasteboard> makePasteboard();
std::unique_ptr<PreferenceStore> makePreferenceStore();
std::unique_ptr<RunLoop> makeRunLoop();
std::unique_ptr<Screens> makeScreens();
std::unique_ptr<ScriptRunner> makeScriptRunner();
std::unique_ptr<StatusBar> makeStatusBar(StatusButton& button);
std::unique_ptr<TaskRunner> makeTaskRunner();
std::unique_ptr<TextCaret> makeTextCaret();
std::unique_ptr<WindowImages> makeWindowImages();
std::unique_ptr<WindowList> makeWindowList();
std::unique_ptr<Workspace> makeWorkspace();

}  // namespace orvel::macos
