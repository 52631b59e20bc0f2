#include "app/session/session_desktop.hpp"

#include "platform/x11/fn_key.hpp"

#include <string>
#include <utility>

namespace orvel::session {

Result<std::unique_ptr<SessionDesktop>> SessionDesktop::open(qt::QtRunLoop& runLoop,
                                                             x11::GuardProcess guard,
                                                             const SessionOptions& options) {
    auto input = x11::X11EventPath::open(runLoop, std::move(guard));
    if (!input) return Failure{input.error()};
    const x11::PlatformTable table = x11::loadPlatformTable();
    auto log = std::make_unique<x11::X11Log>();
    x11::ServiceOptions wanted;
    wanted.table = table;
    wanted.isPowerDryRun = options.isDryRunPower;
    wanted.say = [&line = *log](std::string_view text) { line.line(text); };
    auto services = x11::X11Services::open(runLoop, wanted);
    if (!services) return Failure{services.error()};
    auto desktop =
        std::make_unique<SessionDesktop>(Key(), runLoop, std::move(log), std::move(input).value(),
                                         std::move(services).value(), options);
    const x11::FnKey fn = x11::readFnKey(table);
    desktop->input_->hub().setFnKey(fn.name);
    for (const auto& errors : {desktop->services_->tableErrors(), fn.errors}) {
        for (const std::string& error : errors) desktop->log_->line("⚠️ " + error);
    }
    return desktop;
}

SessionDesktop::SessionDesktop(Key /*key*/, qt::QtRunLoop& runLoop,
                               std::unique_ptr<x11::X11Log> log,
                               std::unique_ptr<x11::X11EventPath> input,
                               std::unique_ptr<x11::X11Services> services,
                               const SessionOptions& options)
    : log_(std::move(log)),
      preferences_(x11::preferencesPath(),
                   [this](std::string_view problem) { log_->line(std::string(problem)); }),
      input_(std::move(input)),
      services_(std::move(services)),
      inputState_(input_->hub(), services_->server(), services_->screens()),
      secretInput_(services_->server()),
      ports_{.accessibilityPermission = absent_.accessibilityPermission,
             .accessibilityWindows = services_->accessibilityWindows(),
             .appControl = absent_.appControl,
             .capsLock = input_->capsLock(),
             .eventMonitors = absent_.eventMonitors,
             .eventPoster = input_->poster(),
             .eventTap = input_->tap(),
             .fileSystem = absent_.fileSystem,
             .haptics = absent_.haptics,
             .inputSources = absent_.inputSources,
             .inputState = inputState_,
             .launcher = services_->launcher(),
             .log = *log_,
             .loginItems = absent_.loginItems,
             .nativeMenus = absent_.nativeMenus,
             .notifications = absent_.notifications,
             .panels = absent_.panels,
             .pasteboard = absent_.pasteboard,
             .preferenceStore = preferences_,
             .runLoop = runLoop,
             .screens = services_->screens(),
             .scriptRunner = services_->scriptRunner(),
             .statusBar = absent_.statusBar,
             .taskRunner = services_->taskRunner(),
             .textCaret = absent_.textCaret,
             .windowImages = absent_.windowImages,
             .windowList = services_->windowList(),
             .workspace = services_->workspace()} {
    if (options.isTracing) {
        log_->startTracing(x11::TraceFile::defaultPath(),
                           [this] { return secretInput_.isTyped(); });
    }
    input_->beforeInput([this] { catchUp(); });
    settingsWatch_ = runLoop.watchReadable(preferences_.changesFd(), [this] { catchUp(); });
}

/// Whatever changed before an event was typed is known when the event is decided.
void SessionDesktop::catchUp() {
    preferences_.refresh();
    services_->catchUp();
    if (settingsChanged_) settingsChanged_();
}

void SessionDesktop::onServerGone(std::function<void()> told) {
    services_->onLost(told);
    input_->onServerGone(std::move(told));
}

}  // namespace orvel::session
