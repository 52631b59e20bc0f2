#include "app/session/session_desktop.hpp"

#include "app/record/record_file.hpp"
#include "platform/x11/fn_key.hpp"

#include <filesystem>
#include <string>
#include <utility>

namespace orvel::session {

namespace {

/// The program that a login item starts: the front door beside this one.
std::string frontDoor() {
    std::error_code error;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const auto beside = own / "orvel";
    return std::filesystem::exists(beside, error)
               ? beside.string()
               : (own / "../../bin/orvel").lexically_normal().string();
}

}  // namespace

Result<std::unique_ptr<SessionDesktop>> SessionDesktop::open(qt::QtRunLoop& runLoop,
                                                             x11::GuardProcess guard,
                                                             const SessionOptions& options) {
    if (!options.recordPath.empty()) {
        if (const auto made = makeRecordFile(options.recordPath); !made) {
            return Failure{made.error()};
        }
    }
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
    std::unique_ptr<x11::TypingWitness> witness;
    if (options.isTracing || !options.recordPath.empty()) {
        auto started = x11::TypingWitness::start(input.value()->hub().session(),
                                                 services.value()->accessibleFocus());
        if (!started) return Failure{started.error()};
        witness = std::move(started).value();
    }
    auto desktop =
        std::make_unique<SessionDesktop>(Key(), runLoop, std::move(log), std::move(input).value(),
                                         std::move(services).value(), std::move(witness), options);
    const x11::FnKey fn = x11::readFnKey(table);
    desktop->input_->hub().setFnKey(fn.name);
    desktop->input_->hub().setTranslator(desktop->services_->shortcutTranslator());
    desktop->services_->inputSources().onEngineSelected(
        [&path = desktop->input_->hub().path()] { path.claimTap(); });
    for (const auto& errors : {desktop->services_->tableErrors(), fn.errors}) {
        for (const std::string& error : errors) desktop->log_->line("⚠️ " + error);
    }
    return desktop;
}

SessionDesktop::SessionDesktop(Key /*key*/, qt::QtRunLoop& runLoop,
                               std::unique_ptr<x11::X11Log> log,
                               std::unique_ptr<x11::X11EventPath> input,
                               std::unique_ptr<x11::X11Services> services,
                               std::unique_ptr<x11::TypingWitness> witness,
                               const SessionOptions& options)
    : log_(std::move(log)),
      preferences_(x11::preferencesPath(),
                   [this](std::string_view problem) { log_->line(std::string(problem)); }),
      input_(std::move(input)),
      essentials_(input_->hub(), input_->tap()),
      services_(std::move(services)),
      inputState_(input_->hub(), services_->server(), services_->screens()),
      windowImages_(runLoop, services_->server(), services_->clients()),
      witness_(std::move(witness)),
      witnessedTap_(witness_ ? std::make_unique<x11::WitnessedTap>(input_->tap(), *witness_)
                             : nullptr),
      loginItems_(frontDoor()),
      recorder_(options.recordPath.empty() ? nullptr : makeRecorder(runLoop)),
      recordingTap_(recorder_ ? std::make_unique<RecordingTap>(*witnessedTap_, *recorder_)
                              : nullptr),
      recordingPoster_(recorder_ ? std::make_unique<RecordingPoster>(input_->poster(), *recorder_)
                                 : nullptr),
      recordingLog_(recorder_ ? std::make_unique<RecordingLog>(*log_, *recorder_) : nullptr),
      shell_(runLoop,
             [&hub = input_->hub()](x11::XKeycode key) { return hub.map().keyDownCodeOf(key); }),
      ports_{.accessibilityPermission = accessibilityPermission_,
             .accessibilityWindows = services_->accessibilityWindows(),
             .appControl = shell_.appControl(),
             .capsLock = input_->capsLock(),
             .essentials = essentials_,
             .eventMonitors = shell_.eventMonitors(),
             .eventPoster =
                 recordingPoster_ ? static_cast<EventPoster&>(*recordingPoster_) : input_->poster(),
             .eventTap = recordingTap_   ? static_cast<EventTap&>(*recordingTap_)
                         : witnessedTap_ ? static_cast<EventTap&>(*witnessedTap_)
                                         : input_->tap(),
             .fileSystem = fileSystem_,
             .haptics = shell_.haptics(),
             .inputSources = services_->inputSources(),
             .inputState = inputState_,
             .launcher = services_->launcher(),
             .log = recordingLog_ ? static_cast<Log&>(*recordingLog_) : *log_,
             .loginItems = loginItems_,
             .nativeMenus = shell_.nativeMenus(),
             .notifications = shell_.notifications(),
             .panels = shell_.panels(),
             .pasteboard = services_->pasteboard(),
             .preferenceStore = preferences_,
             .runLoop = runLoop,
             .screens = services_->screens(),
             .scriptRunner = services_->scriptRunner(),
             .statusBar = shell_.statusBar(),
             .taskRunner = services_->taskRunner(),
             .textCaret = services_->textCaret(),
             .windowImages = windowImages_,
             .windowList = services_->windowList(),
             .workspace = services_->workspace()} {
    if (recorder_) recordFile_.open(options.recordPath, std::ios::app);
    if (options.isTracing) log_->startTracing(x11::TraceFile::defaultPath(), *witness_);
    if (witness_) watchTyping();
    input_->beforeInput([this] { catchUp(); });
    settingsWatch_ = runLoop.watchReadable(preferences_.changesFd(), [this] { catchUp(); });
}

std::unique_ptr<Recorder> SessionDesktop::makeRecorder(RunLoop& runLoop) {
    return std::make_unique<Recorder>(
        recordFile_, RecorderSources{.runLoop = runLoop,
                                     .secrecy = *witness_,
                                     .frontmostApplication = [this] { return frontmost(); },
                                     .settings = preferences_});
}

void SessionDesktop::watchTyping() {
    input_->afterInput([this] { witness_->endMoment(); });
    witness_->onDecided([this, &runLoop = ports_.runLoop, isAlive = std::weak_ptr(isAlive_)] {
        runLoop.post([this, isAlive] {
            if (!isAlive.expired()) keepWhatIsOpen();
        });
    });
}

void SessionDesktop::keepWhatIsOpen() {
    if (recorder_) recorder_->release();
    log_->release();
}

void SessionDesktop::closeRecords() {
    constexpr std::chrono::milliseconds limit{1000};
    if (!witness_) return;
    witness_->settle(limit);
    keepWhatIsOpen();
}

std::optional<std::string> SessionDesktop::frontmost() const {
    const auto application = services_->workspace().frontmostApplication();
    return application ? application->bundleId : std::nullopt;
}

/// Whatever changed before an event was typed is known when the event is decided.
void SessionDesktop::catchUp() {
    // What the settings switch may handle events itself.
    if (std::exchange(isCatchingUp_, true)) return;
    preferences_.refresh();
    services_->catchUp();
    if (settingsRead_) settingsRead_();
    isCatchingUp_ = false;
}

void SessionDesktop::onServerGone(std::function<void()> told) {
    services_->onLost(told);
    input_->onServerGone(std::move(told));
}

}  // namespace orvel::session
