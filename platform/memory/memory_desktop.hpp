#pragma once

#include "platform/desktop.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/memory_accessibility_permission.hpp"
#include "platform/memory/memory_accessibility_windows.hpp"
#include "platform/memory/memory_app_control.hpp"
#include "platform/memory/memory_caps_lock.hpp"
#include "platform/memory/memory_essentials.hpp"
#include "platform/memory/memory_event_monitors.hpp"
#include "platform/memory/memory_event_poster.hpp"
#include "platform/memory/memory_event_tap.hpp"
#include "platform/memory/memory_file_system.hpp"
#include "platform/memory/memory_haptics.hpp"
#include "platform/memory/memory_input_sources.hpp"
#include "platform/memory/memory_input_state.hpp"
#include "platform/memory/memory_launcher.hpp"
#include "platform/memory/memory_log.hpp"
#include "platform/memory/memory_login_items.hpp"
#include "platform/memory/memory_native_menu.hpp"
#include "platform/memory/memory_notifications.hpp"
#include "platform/memory/memory_panels.hpp"
#include "platform/memory/memory_pasteboard.hpp"
#include "platform/memory/memory_preference_store.hpp"
#include "platform/memory/memory_run_loop.hpp"
#include "platform/memory/memory_screens.hpp"
#include "platform/memory/memory_script_runner.hpp"
#include "platform/memory/memory_status_bar.hpp"
#include "platform/memory/memory_task_runner.hpp"
#include "platform/memory/memory_text_caret.hpp"
#include "platform/memory/memory_window_images.hpp"
#include "platform/memory/memory_window_list.hpp"
#include "platform/memory/memory_workspace.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

/// A desktop that exists in this process alone. Nothing outside it is read or touched, time moves
/// only when it is advanced, and everything that is done to it is kept in `effects`. One thread.
class MemoryDesktop {
public:
    MemoryDesktop() = default;
    MemoryDesktop(const MemoryDesktop&) = delete;
    MemoryDesktop& operator=(const MemoryDesktop&) = delete;

    World world;
    EffectLog effects;
    MemoryRunLoop runLoop{effects};

    MemoryAccessibilityPermission accessibilityPermission{world, effects};
    MemoryAccessibilityWindows accessibilityWindows{world, effects};
    MemoryAppControl appControl{world, effects};
    MemoryCapsLock capsLock{world, effects};
    MemoryEssentials essentials;
    MemoryEventMonitors eventMonitors{effects};
    MemoryEventPoster eventPoster{world, effects};
    MemoryEventTap eventTap{world, effects};
    MemoryFileSystem fileSystem{world, effects};
    MemoryHaptics haptics{effects};
    MemoryInputSources inputSources{world, effects};
    MemoryInputState inputState{world};
    MemoryLauncher launcher{world, effects, runLoop};
    MemoryLog log{effects};
    MemoryLoginItems loginItems{world, effects};
    MemoryNativeMenus nativeMenus{effects};
    MemoryNotifications notifications{effects};
    MemoryPanels panels{effects};
    MemoryPasteboard pasteboard{world, effects};
    MemoryPreferenceStore preferenceStore{effects};
    MemoryScreens screens{world};
    MemoryScriptRunner scriptRunner{world, effects};
    MemoryStatusBar statusBar{world, effects};
    MemoryTaskRunner taskRunner{world, effects};
    MemoryTextCaret textCaret{world};
    MemoryWindowImages windowImages{world, effects};
    MemoryWindowList windowList{world};
    MemoryWorkspace workspace{world, effects};

    /// Everything of this desktop as the system sees it.
    [[nodiscard]] Desktop& ports() { return ports_; }

private:
    Desktop ports_{accessibilityPermission,
                   accessibilityWindows,
                   appControl,
                   capsLock,
                   essentials,
                   eventMonitors,
                   eventPoster,
                   eventTap,
                   fileSystem,
                   haptics,
                   inputSources,
                   inputState,
                   launcher,
                   log,
                   loginItems,
                   nativeMenus,
                   notifications,
                   panels,
                   pasteboard,
                   preferenceStore,
                   runLoop,
                   screens,
                   scriptRunner,
                   statusBar,
                   taskRunner,
                   textCaret,
                   windowImages,
                   windowList,
                   workspace};
};

}  // namespace orvel::memory
