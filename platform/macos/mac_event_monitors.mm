#include "platform/event_monitors.hpp"

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

MonitoredEvent describe(NSEvent* event) {
    MonitoredEvent described;
    described.type = EventMask{1} << static_cast<unsigned>(event.type);
    // Only a key event may be asked for its key.
    if (described.type == monitor_mask::keyDown) described.keyCode = event.keyCode;
    described.window = panelOfWindow((__bridge CFTypeRef)event.window);
    return described;
}

/// What a monitor calls. The system may still hold the monitor when it is removed by a handler
/// of the same event, and a handler may remove its own.
struct Watch {
    std::shared_ptr<MonitorHandler> handler;

    bool tell(NSEvent* event) const {
        const std::shared_ptr<MonitorHandler> running = handler;
        return running == nullptr || (*running)(describe(event));
    }
};

id install(MonitorScope scope, NSEventMask mask, std::shared_ptr<Watch> watch) {
    if (scope == MonitorScope::global) {
        return [NSEvent addGlobalMonitorForEventsMatchingMask:mask
                                                      handler:^(NSEvent* event) {
                                                        watch->tell(event);
                                                      }];
    }
    return [NSEvent addLocalMonitorForEventsMatchingMask:mask
                                                 handler:^NSEvent*(NSEvent* event) {
                                                   return watch->tell(event) ? event : nil;
                                                 }];
}

class MacEventMonitor final : public EventMonitor {
public:
    MacEventMonitor(CfRef<CFTypeRef> monitor, std::shared_ptr<Watch> watch)
        : monitor_(std::move(monitor)), watch_(std::move(watch)) {}
    ~MacEventMonitor() override {
        watch_->handler = nullptr;
        [NSEvent removeMonitor:(__bridge id)monitor_.get()];
    }
    MacEventMonitor(const MacEventMonitor&) = delete;
    MacEventMonitor& operator=(const MacEventMonitor&) = delete;

private:
    CfRef<CFTypeRef> monitor_;
    std::shared_ptr<Watch> watch_;
};

class MacEventMonitors final : public EventMonitors {
public:
    [[nodiscard]] std::unique_ptr<EventMonitor> add(MonitorScope scope, EventMask mask,
                                                    std::string_view,
                                                    MonitorHandler handler) override {
        @autoreleasepool {
            const auto watch = std::make_shared<Watch>();
            watch->handler = std::make_shared<MonitorHandler>(std::move(handler));
            id monitor = install(scope, mask, watch);
            if (monitor == nil) return nullptr;
            return std::make_unique<MacEventMonitor>(CfRef<CFTypeRef>(CFBridgingRetain(monitor)),
                                                     watch);
        }
    }
};

}  // namespace

std::unique_ptr<EventMonitors> makeEventMonitors() { return std::make_unique<MacEventMonitors>(); }

}  // namespace orvel::macos
