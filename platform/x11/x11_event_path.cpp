#include "platform/x11/x11_event_path.hpp"

#include "platform/x11/heartbeat.hpp"

#include <utility>

namespace orvel::x11 {

Result<std::unique_ptr<X11EventPath>> X11EventPath::open(qt::QtRunLoop& runLoop, GuardProcess guard,
                                                         const std::string& display) {
    auto session = X11Session::open(display);
    if (!session) return Failure{session.error()};
    std::unique_ptr<X11EventPath> path(
        new X11EventPath(runLoop, std::move(guard), std::move(session).value()));
    path->display_ = display;
    return path;
}

X11EventPath::X11EventPath(qt::QtRunLoop& runLoop, GuardProcess guard,
                           std::unique_ptr<X11Session> session)
    : runLoop_(runLoop),
      guard_(std::make_unique<GuardProcess>(std::move(guard))),
      session_(std::move(session)),
      hub_(*session_),
      tap_(hub_),
      poster_(hub_, runLoop),
      capsLock_(hub_) {
    session_->onLost([this] {
        watch_.reset();
        runLoop_.post([this] {
            if (serverGone_) serverGone_();
        });
    });
    hub_.onPending([this] { runLoop_.post([this] { handleInput(); }); });
    watch_ = runLoop.watchReadable(session_->fileDescriptor(), [this] { handleInput(); });
    heartbeat_ = runLoop.every(kHeartbeatInterval, "guard", [this] { beat(); });
}

X11EventPath::~X11EventPath() {
    heartbeat_.reset();
    watch_.reset();
    tap_.stop();
}

void X11EventPath::handleInput() {
    tap_.processEvents();
    if (afterInput_) afterInput_();
}

void X11EventPath::beat() {
    if (guard_ && guard_->beat()) return;
    guard_.reset();
    auto guard = GuardProcess::start(display_);
    if (guard) guard_ = std::make_unique<GuardProcess>(std::move(guard).value());
}

}  // namespace orvel::x11
