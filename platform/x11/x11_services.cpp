#include "platform/x11/x11_services.hpp"

#include "platform/x11/child_programs.hpp"
#include "platform/x11/x11_window_images.hpp"

#include <system_error>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr const char* kForceQuit = "orvel-force-quit";

std::filesystem::path ownFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

}  // namespace

Result<std::unique_ptr<X11Services>> X11Services::open(qt::QtRunLoop& runLoop,
                                                       const ServiceOptions& options) {
    auto server = ServiceConnection::open(options.display);
    if (!server) return Failure{server.error()};
    return std::unique_ptr<X11Services>(
        new X11Services(runLoop, std::move(server).value(), options));
}

X11Services::X11Services(qt::QtRunLoop& runLoop, std::unique_ptr<ServiceConnection> server,
                         const ServiceOptions& options)
    : runLoop_(runLoop),
      tableErrors_(options.table.errors),
      dialect_(options.table, tableErrors_),
      server_(std::move(server)),
      inputMethods_(options.say),
      clients_(*server_, entries_, ApplicationTable(options.table, tableErrors_)),
      desktopWindows_(runLoop, manager_, clients_),
      applicationLauncher_(options.display),
      power_({options.isPowerDryRun, options.say}),
      launcher_(runLoop, openService_),
      pasteboard_(runLoop, options.display),
      scriptRunner_(
          {power_, dock_, desktopWindows_, fileManager_, [this] { return showForceQuitDialog(); }}),
      taskRunner_(runLoop, scriptRunner_, openService_, options.display),
      helperFolder_(options.helperFolder.empty() ? ownFolder() : options.helperFolder),
      display_(options.display) {
    const auto soon = [this, isAlive = std::weak_ptr(isAlive_)](void (X11Services::*task)()) {
        runLoop_.post([this, isAlive, task] {
            if (!isAlive.expired()) (this->*task)();
        });
    };
    server_->setHooks([soon] { soon(&X11Services::catchUp); },
                      [this] {
                          watch_.reset();
                          if (lost_) std::exchange(lost_, nullptr)();
                      });
    entries_.onChange([soon] { soon(&X11Services::applicationsChanged); });
    watch_ = runLoop_.watchReadable(server_->fd(), [this] { catchUp(); });
    catchUp();
}

X11Services::~X11Services() { entries_.onChange(nullptr); }

void X11Services::catchUp() {
    server_->dispatch();
    inputMethods_.noticeActivity();
}

void X11Services::applicationsChanged() { clients_.refresh(); }

Result<> X11Services::showForceQuitDialog() {
    // One dialog is enough: another wish for it brings it to the front.
    const auto isShown = desktopWindows_.activateApplication(kForceQuit);
    if (isShown && isShown.value()) return {};
    return startProgram((helperFolder_ / kForceQuit).string(), {}, display_);
}

void X11Services::onLost(std::function<void()> lost) { lost_ = std::move(lost); }

std::vector<ServiceCheck> X11Services::checks() {
    return {manager_.check(),
            screens_.check(),
            workspace_.check(),
            inputSources_.check(),
            inputMethods_.check(),
            X11WindowImages::check(*server_),
            pasteboard_.check(*server_),
            PowerService::check(),
            DockService::check(),
            X11TextCaret::check(),
            checkForceQuit()};
}

ServiceCheck X11Services::checkForceQuit() const {
    const auto program = helperFolder_ / kForceQuit;
    if (::access(program.c_str(), X_OK) == 0)
        return {"force quit", true, false, program.string(), {}};
    return {"force quit", false, false,
            program.string() + " is not installed: applications that hang cannot be ended",
            "install " + std::string(kForceQuit) + " beside orvel-session"};
}

}  // namespace orvel::x11
