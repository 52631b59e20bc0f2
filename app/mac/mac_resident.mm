#include "app/mac/mac_resident.hpp"

#include "app/application.hpp"
#include "app/mac/mac_recording.hpp"
#include "platform/app_control.hpp"
#include "platform/macos/mac_attention.hpp"
#include "platform/macos/mac_desktop.hpp"
#include "platform/macos/mac_end_signals.hpp"
#include "platform/macos/mac_observation.hpp"
#include "platform/macos/mac_qt_shell.hpp"
#include "platform/macos/mac_running_note.hpp"
#include "platform/macos/mac_settings_requests.hpp"
#include "platform/run_loop.hpp"
#include "settings_ui/view/settings_content.hpp"

#import <AppKit/AppKit.h>

#include <memory>
#include <optional>

namespace orvel::session {

namespace {

/// Everything that lives as long as the program runs in this session.
class Resident {
public:
    Resident(macos::MacQtShell& shell, const SessionOptions& options)
        : desktop_(macos::makeDesktop(
              shell.panelContents(),
              {.keepsTrace = options.isTracing, .isPowerDryRun = options.isDryRunPower})),
          recording_(startRecording(options)),
          ports_(recording_ ? desktop_->portsWith(recording_->ports()) : desktop_->ports()),
          application_(ports_),
          settings_(shell.contentHost(), application_.settings(), application_.onboarding(),
                    application_.engine().isPaused(),
                    [this] { application_.settingsPanel().hide(); }),
          ending_(macos::NoticeCenter::application,
                  (__bridge CFStringRef)NSApplicationWillTerminateNotification,
                  [this](CFTypeRef) { end(); }) {
        const auto noted = [this](bool) { tellOthers(); };
        isOnChange_ = application_.engine().isWindowsModeEnabled().subscribe(noted);
        isPausedChange_ = application_.engine().isPaused().subscribe(noted);
        ports_.runLoop.post([this] { begin(); });
    }

private:
    std::unique_ptr<MacRecording> startRecording(const SessionOptions& options) {
        if (options.recordPath.empty()) return nullptr;
        return std::make_unique<MacRecording>(desktop_->ports(), options.recordPath);
    }

    void begin() {
        // A copy that finds itself to be the second one ends; the first one shows itself instead.
        if (ports_.appControl.runningInstances().size() > 1) {
            macos::requestSettings();
        } else {
            note_.emplace();
        }
        if (recording_) recording_->recorder().begin();
        application_.delegate().applicationDidFinishLaunching();
    }
    void end() {
        application_.delegate().applicationWillTerminate();
        note_.reset();
    }
    void tellOthers() {
        if (!note_) return;
        note_->update(application_.engine().isWindowsModeEnabled().get(),
                      application_.engine().isPaused().get());
    }

    macos::Attention attention_;
    std::unique_ptr<macos::MacDesktop> desktop_;
    std::unique_ptr<MacRecording> recording_;
    Desktop ports_;
    Application application_;
    settings_view::SettingsContent settings_;
    std::optional<macos::RunningNote> note_;
    Subscription isOnChange_;
    Subscription isPausedChange_;
    macos::SettingsRequests requests_{[this] { application_.settingsPanel().show(); }};
    macos::EndSignals endSignals_{[this] { ports_.appControl.terminate(); }};
    macos::Observation ending_;
};

}  // namespace

int runResident(const SessionOptions& options) {
    @autoreleasepool {
        macos::MacQtShell shell;
        [NSApplication.sharedApplication
            setActivationPolicy:NSApplicationActivationPolicyAccessory];
        const Resident resident(shell, options);
        return shell.run();
    }
}

}  // namespace orvel::session
