#include "platform/memory/memory_event_monitors.hpp"

#include <algorithm>

namespace orvel::memory {

namespace {

void logChange(EffectLog& effects, std::string_view op, const InstalledMonitor& monitor) {
    effects.effect("monitor")
        ->beginObject()
        .member("op", op)
        .member("scope", scopeName(monitor.scope))
        .member("mask", monitor.mask)
        .member("owner", monitor.owner)
        .endObject();
}

}  // namespace

class MemoryEventMonitors::Token final : public EventMonitor {
public:
    Token(EffectLog& effects, std::weak_ptr<List> list,
          std::shared_ptr<const InstalledMonitor> monitor)
        : effects_(effects), list_(std::move(list)), monitor_(std::move(monitor)) {}
    ~Token() override {
        const auto list = list_.lock();
        if (!list) return;
        std::erase(*list, monitor_);
        logChange(effects_, "remove", *monitor_);
    }

private:
    EffectLog& effects_;
    std::weak_ptr<List> list_;
    std::shared_ptr<const InstalledMonitor> monitor_;
};

std::unique_ptr<EventMonitor> MemoryEventMonitors::add(MonitorScope scope, EventMask mask,
                                                       std::string_view owner,
                                                       MonitorHandler handler) {
    const auto monitor = std::make_shared<const InstalledMonitor>(
        InstalledMonitor{scope, mask, std::string(owner), std::move(handler)});
    installed_->push_back(monitor);
    logChange(effects_, "add", *monitor);
    return std::make_unique<Token>(effects_, installed_, monitor);
}

bool MemoryEventMonitors::deliver(MonitorScope scope, const MonitoredEvent& event) {
    const List told = *installed_;
    for (const auto& monitor : told) {
        const bool isThere =
            std::find(installed_->begin(), installed_->end(), monitor) != installed_->end();
        if (!isThere || monitor->scope != scope || (monitor->mask & event.type) == 0) continue;
        if (!monitor->handler(event) && scope == MonitorScope::local) return false;
    }
    return true;
}

std::string_view scopeName(MonitorScope scope) {
    return scope == MonitorScope::global ? "global" : "local";
}

}  // namespace orvel::memory
