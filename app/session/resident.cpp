#include "app/session/resident.hpp"

#include "app/application.hpp"
#include "app/session/panel_session.hpp"
#include "app/session/session_desktop.hpp"
#include "app/session/session_environment.hpp"
#include "app/session/session_lock.hpp"
#include "app/session/termination_signals.hpp"
#include "platform/x11/running_sessions.hpp"
#include "platform/x11/x11_application.hpp"
#include "platform/x11/x11_run_loop.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orvel::session {

namespace {

int fail(const std::string& message, int status = kFailed) {
    std::fflush(stdout);
    std::fprintf(stderr, "orvel: %s\n", message.c_str());
    return status;
}

/// Keeps the tap in step with the settings and with the panic chord.
class Resident {
public:
    Resident(qt::QtRunLoop& runLoop, SessionDesktop& desktop, const std::string& display,
             const SignalPipe& panelRequests)
        : runLoop_(runLoop),
          desktop_(desktop),
          application_(desktop.ports()),
          panel_(runLoop, desktop.shell(), application_, panelRequests),
          note_(x11::SessionNote::claim(display)) {
        desktop.onServerGone([this] { runLoop_.quit(kServerGone); });
        desktop.onSettingsRead([this] { followSettings(); });
        desktop.tap().onPanicChord([this](bool isGivenBack) { pause(isGivenBack); });
        isOnChange_ =
            application_.engine().isWindowsModeEnabled().subscribe([this](bool) { tellOthers(); });
        isPausedChange_ = application_.engine().isPaused().subscribe([this](bool isPaused) {
            // The panel can end a pause that the chord began.
            if (!isPaused) desktop_.tap().takeBack();
            tellOthers();
        });
    }

    int run() {
        const TerminationSignals endRequests(runLoop_, [this] { runLoop_.quit(); });
        if (desktop_.recorder() != nullptr) desktop_.recorder()->begin();
        followSettings();
        const bool isFirst = isFirstStart();
        application_.delegate().applicationDidFinishLaunching();
        if (isFirst) sayWhereThePanelIs();
        const int status = runLoop_.run();
        if (status != kServerGone) application_.delegate().applicationWillTerminate();
        desktop_.tap().stop();
        runLoop_.finishBackground();
        desktop_.closeRecords();
        return status;
    }

private:
    /// Every start stores this setting.
    [[nodiscard]] bool isFirstStart() {
        auto& store = desktop_.preferenceStore();
        const auto stored = store.handle(preferenceInfo(PreferenceKey::initialToolTipDelay).name);
        return store.value(stored) == nullptr;
    }
    void sayWhereThePanelIs() {
        std::puts(desktop_.shell().hasTray()
                      ? "Orvel's icon is in the tray: click it, or run 'orvel panel', to choose "
                        "what Orvel does."
                      : "This desktop shows no tray: run 'orvel panel' to choose what Orvel does.");
        std::fflush(stdout);
    }
    void followSettings() {
        desktop_.tap().setWheelGrab(
            application_.preferences().boolForKey(PreferenceKey::cardScroll));
    }
    /// The command line says when a change of the settings has no effect yet. Without a place for
    /// notes it does not, which stops nobody.
    void tellOthers() {
        if (!note_) return;
        note_.value().update(application_.engine().isWindowsModeEnabled().get(),
                             application_.engine().isPaused().get());
    }
    void pause(bool isGivenBack) {
        if (isGivenBack) wasPaused_ = application_.engine().isPaused();
        application_.engine().setPaused(isGivenBack || wasPaused_);
        desktop_.ports().log.line(isGivenBack
                                      ? "🆘 紧急组合键：键盘与鼠标已归还，引擎已暂停 (再按一次恢复)"
                                      : "✅ 紧急组合键：引擎已恢复运转");
    }

    qt::QtRunLoop& runLoop_;
    SessionDesktop& desktop_;
    Application application_;
    PanelSession panel_;
    Result<x11::SessionNote> note_;
    Subscription isOnChange_;
    Subscription isPausedChange_;
    bool wasPaused_ = false;
};

int runWithLock(int& argc, char** argv, const SessionOptions& options, const std::string& display,
                const SignalPipe& panelRequests) {
    // Before anything opens a display or starts a thread.
    auto guard = x11::GuardProcess::start();
    if (!guard) return fail(guard.error());
    // Qt ends the process by itself when there is no display.
    if (const auto server = x11::X11Session::open(); !server) return fail(server.error());
    const x11::X11Application qtApplication(argc, argv, kServerGone);
    x11::X11RunLoop runLoop(argc, argv);
    auto desktop = SessionDesktop::open(runLoop.get(), std::move(guard).value(), options);
    if (!desktop) return fail(desktop.error());
    Resident resident(runLoop.get(), *desktop.value(), display, panelRequests);
    const int status = resident.run();
    if (status == kServerGone) x11::X11Application::sayServerGone();
    return status;
}

}  // namespace

int runResident(int& argc, char** argv, const SessionOptions& options) {
    const SessionEnvironment environment = readEnvironment();
    if (environment.isWayland()) {
        return fail(
            "this is a Wayland session, where no program may see or change the keys of "
            "others; log in to an X11 (Xorg) session to use Orvel");
    }
    if (environment.display.empty()) return fail("no X display: DISPLAY is not set");
    // Before the lock tells others of this process.
    const SignalPipe panelRequests({kPanelSignal});
    LockRefusal refusal;
    const auto lock = SessionLock::take(x11::runtimeFolder(), environment.display, refusal);
    if (!lock && !refusal.problem.empty()) {
        return fail("cannot lock this session in '" + x11::runtimeFolder() +
                    "': " + refusal.problem);
    }
    if (!lock) {
        const std::string opened = requestPanel(refusal.holder) ? "; its settings panel opens" : "";
        return fail("already running in this session (process " + std::to_string(refusal.holder) +
                    ")" + opened);
    }
    return runWithLock(argc, argv, options, environment.display, panelRequests);
}

int openPanel() {
    const SessionEnvironment environment = readEnvironment();
    if (environment.display.empty()) return fail("no X display: DISPLAY is not set");
    LockRefusal refusal;
    const auto lock = SessionLock::take(x11::runtimeFolder(), environment.display, refusal);
    if (!lock && requestPanel(refusal.holder)) return 0;
    return fail("Orvel does not run in this session; start it with 'orvel run'");
}

}  // namespace orvel::session
