#pragma once

#include "engine/engine_services.hpp"
#include "engine/engine_state.hpp"
#include "engine/tap_watchdog.hpp"
#include "platform/accessibility_permission.hpp"
#include "platform/app_control.hpp"
#include "platform/base/shared_instance.hpp"
#include "platform/caps_lock.hpp"
#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/input_sources.hpp"

#include <optional>

namespace orvel {

/// The one input engine: owns the tap of the session and everything that rules remember. Main
/// thread.
class OrvelEngine {
public:
    struct Ports {
        AccessibilityPermission& permission;
        AccessibilityWindows& windows;
        AppControl& appControl;
        CapsLock& capsLock;
        EventPoster& eventPoster;
        EventTap& eventTap;
        FileSystem& fileSystem;
        Haptics& haptics;
        InputSources& inputSources;
        InputState& inputState;
        Launcher& launcher;
        Log& log;
        RunLoop& runLoop;
        Screens& screens;
        ScriptRunner& scriptRunner;
        TaskRunner& taskRunner;
        Workspace& workspace;
    };
    struct Commands {
        OverlayCommands& overlay;
        ClipboardCommands& clipboard;
        FinderMenuCommands& finderMenu;
    };

    OrvelEngine(const Ports& ports, const Commands& commands, Preferences& preferences);
    OrvelEngine(const OrvelEngine&) = delete;
    OrvelEngine& operator=(const OrvelEngine&) = delete;

    /// The installed engine; see `SharedInstance`.
    static OrvelEngine& shared() { return SharedInstance<OrvelEngine>::get(); }

    /// Asks for permission and installs the tap. Without permission, or when the tap is refused,
    /// it says so and a later call tries again; with a tap it does nothing.
    void start();

    [[nodiscard]] const EngineState& state() const { return state_; }
    [[nodiscard]] const EventTap& tap() const { return ports_.eventTap; }

    /// The master switch; every set is reported, also an equal one.
    void setWindowsModeEnabled(bool isEnabled);
    [[nodiscard]] const Published<bool>& isWindowsModeEnabled() const {
        return state_.isWindowsModeEnabled;
    }
    /// While paused every event passes untouched.
    void setPaused(bool isPaused) { state_.isPaused.set(isPaused); }
    [[nodiscard]] const Published<bool>& isPaused() const { return state_.isPaused; }
    void setMouseSideButtonEnabled(bool isEnabled) { state_.isMouseSideButtonEnabled = isEnabled; }
    void setAltMenuEnabled(bool isEnabled) { state_.isAltMenuEnabled = isEnabled; }

    void postKeystroke(KeyCode keyCode, EventFlags modifier);
    void postMediaKey(MediaKeyType keyType);
    void toggleInputSourceViaTIS();
    [[nodiscard]] bool isCurrentInputChinese() const;
    void setCapsLockHardwareState(bool on);
    void snapActiveWindow(SnapDirection direction);

private:
    void queueAutomationPrecheck();
    [[nodiscard]] bool installTap();
    EventVerdict handle(Event& event);

    Ports ports_;
    EngineState state_;
    KeystrokePoster keystrokes_;
    MediaKeyPoster mediaKeys_;
    InputSourceSwitcher inputSources_;
    WindowSnapper snapper_;
    EngineServices services_;
    std::optional<TapWatchdog> watchdog_;
    SharedInstance<OrvelEngine> installed_{*this};
};

}  // namespace orvel
