#include "platform/x11/x11_services.hpp"

#include <utility>

namespace orvel::x11 {

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
      server_(std::move(server)),
      clients_(*server_, entries_, ApplicationTable(options.table, tableErrors_)) {
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

void X11Services::applicationsChanged() { clients_.refresh(); }

void X11Services::onLost(std::function<void()> lost) { lost_ = std::move(lost); }

std::vector<ServiceCheck> X11Services::checks() {
    return {manager_.check(), screens_.check(), workspace_.check()};
}

}  // namespace orvel::x11
