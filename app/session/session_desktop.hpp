#pragma once

#include "app/cli/session_options.hpp"
#include "app/record/recorder.hpp"
#include "platform/desktop.hpp"
#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/typing_witness.hpp"
#include "platform/x11/x11_accessibility_permission.hpp"
#include "platform/x11/x11_essentials.hpp"
#include "platform/x11/x11_event_path.hpp"
#include "platform/x11/x11_file_system.hpp"
#include "platform/x11/x11_input_state.hpp"
#include "platform/x11/x11_log.hpp"
#include "platform/x11/x11_login_items.hpp"
#include "platform/x11/x11_preference_store.hpp"
#include "platform/x11/x11_services.hpp"
#include "platform/x11/x11_shell.hpp"
#include "platform/x11/x11_window_images.hpp"

#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvel::session {

/// The desktop of this X11 session, with everything that its services share. Main thread.
class SessionDesktop {
    /// Only `open` can make one.
    struct Key {};

public:
    /// Fails when the session lacks what the program cannot do without.
    static Result<std::unique_ptr<SessionDesktop>> open(qt::QtRunLoop& runLoop,
                                                        x11::GuardProcess guard,
                                                        const SessionOptions& options);

    [[nodiscard]] Desktop& ports() { return ports_; }
    [[nodiscard]] x11::X11EventTap& tap() { return input_->tap(); }
    [[nodiscard]] x11::X11Shell& shell() { return shell_; }
    [[nodiscard]] x11::X11PreferenceStore& preferenceStore() { return preferences_; }

    /// Null when the session is not recorded.
    [[nodiscard]] Recorder* recorder() { return recorder_.get(); }

    /// Writes what is still known to be no secret of what was typed. To be called when nothing more
    /// can be typed; waits a moment.
    void closeRecords();
    /// Called once when the X server is gone.
    void onServerGone(std::function<void()> told);
    /// Called whenever the settings may have changed: before every input, and when their file did.
    /// Must be cheap when nothing changed.
    void onSettingsRead(std::function<void()> told) { settingsRead_ = std::move(told); }

    SessionDesktop(Key key, qt::QtRunLoop& runLoop, std::unique_ptr<x11::X11Log> log,
                   std::unique_ptr<x11::X11EventPath> input,
                   std::unique_ptr<x11::X11Services> services,
                   std::unique_ptr<x11::TypingWitness> witness, const SessionOptions& options);

private:
    void catchUp();
    void keepWhatIsOpen();
    void watchTyping();
    [[nodiscard]] std::unique_ptr<Recorder> makeRecorder(RunLoop& runLoop);
    [[nodiscard]] std::optional<std::string> frontmost() const;

    std::unique_ptr<x11::X11Log> log_;
    x11::X11AccessibilityPermission accessibilityPermission_;
    x11::X11PreferenceStore preferences_;
    std::unique_ptr<x11::X11EventPath> input_;
    x11::X11Essentials essentials_;
    std::unique_ptr<x11::X11Services> services_;
    x11::X11InputState inputState_;
    x11::X11WindowImages windowImages_;
    /// Only while something of what is typed may be kept.
    std::unique_ptr<x11::TypingWitness> witness_;
    std::unique_ptr<x11::WitnessedTap> witnessedTap_;
    x11::X11FileSystem fileSystem_;
    x11::X11LoginItems loginItems_;
    std::ofstream recordFile_;
    std::unique_ptr<Recorder> recorder_;
    std::unique_ptr<RecordingTap> recordingTap_;
    std::unique_ptr<RecordingPoster> recordingPoster_;
    std::unique_ptr<RecordingLog> recordingLog_;
    x11::X11Shell shell_;
    /// Tasks that are still queued when this object ends do nothing.
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
    std::function<void()> settingsRead_;
    bool isCatchingUp_ = false;
    std::unique_ptr<qt::ReadableWatch> settingsWatch_;
    Desktop ports_;
};

}  // namespace orvel::session
