#pragma once

#include "app/preferences.hpp"
#include "engine/clipboard_commands.hpp"
#include "engine/finder_menu_commands.hpp"
#include "engine/input_sources/input_source_switcher.hpp"
#include "engine/overlay_commands.hpp"
#include "engine/snapping/window_snapper.hpp"
#include "engine/synthesis/keystroke_poster.hpp"
#include "engine/synthesis/media_key_poster.hpp"
#include "platform/file_system.hpp"
#include "platform/haptics.hpp"
#include "platform/input_state.hpp"
#include "platform/launcher.hpp"
#include "platform/log.hpp"
#include "platform/run_loop.hpp"
#include "platform/script_runner.hpp"
#include "platform/task_runner.hpp"
#include "platform/workspace.hpp"

namespace orvel {

/// What rules act through. Everything outlives the engine's queued work.
struct EngineServices {
    Preferences& preferences;
    Log& log;
    RunLoop& runLoop;
    InputState& inputState;
    Workspace& workspace;
    Launcher& launcher;
    ScriptRunner& scriptRunner;
    TaskRunner& taskRunner;
    FileSystem& fileSystem;
    Haptics& haptics;
    KeystrokePoster& keystrokes;
    MediaKeyPoster& mediaKeys;
    InputSourceSwitcher& inputSources;
    WindowSnapper& snapper;
    OverlayCommands& overlay;
    ClipboardCommands& clipboard;
    FinderMenuCommands& finderMenu;
};

}  // namespace orvel
