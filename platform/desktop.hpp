#pragma once

namespace orvel {

class AccessibilityPermission;
class AccessibilityWindows;
class AppControl;
class CapsLock;
class Essentials;
class EventMonitors;
class EventPoster;
class EventTap;
class FileSystem;
class Haptics;
class InputSources;
class InputState;
class Launcher;
class Log;
class LoginItems;
class NativeMenus;
class Notifications;
class Panels;
class Pasteboard;
class PreferenceStore;
class RunLoop;
class Screens;
class ScriptRunner;
class StatusBar;
class TaskRunner;
class TextCaret;
class WindowImages;
class WindowList;
class Workspace;

/// Every service of one desktop. Back ends fill it; only the composition root takes it apart.
struct Desktop {
    AccessibilityPermission& accessibilityPermission;
    AccessibilityWindows& accessibilityWindows;
    AppControl& appControl;
    CapsLock& capsLock;
    Essentials& essentials;
    EventMonitors& eventMonitors;
    EventPoster& eventPoster;
    EventTap& eventTap;
    FileSystem& fileSystem;
    Haptics& haptics;
    InputSources& inputSources;
    InputState& inputState;
    Launcher& launcher;
    Log& log;
    LoginItems& loginItems;
    NativeMenus& nativeMenus;
    Notifications& notifications;
    Panels& panels;
    Pasteboard& pasteboard;
    PreferenceStore& preferenceStore;
    RunLoop& runLoop;
    Screens& screens;
    ScriptRunner& scriptRunner;
    StatusBar& statusBar;
    TaskRunner& taskRunner;
    TextCaret& textCaret;
    WindowImages& windowImages;
    WindowList& windowList;
    Workspace& workspace;
};

}  // namespace orvel
