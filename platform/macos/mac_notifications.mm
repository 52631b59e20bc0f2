#include "platform/notifications.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_observation.hpp"
#include "platform/macos/mac_panel_windows.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {

namespace {

NSNotificationName systemName(NotificationName name) {
    switch (name) {
        case NotificationName::windowDidResignKey:
            return NSWindowDidResignKeyNotification;
        case NotificationName::applicationDidResignActive:
            break;
    }
    return NSApplicationDidResignActiveNotification;
}

std::optional<PanelId> senderOf(CFTypeRef notification) {
    id sender = ((__bridge NSNotification*)notification).object;
    if (![sender isKindOfClass:[NSWindow class]]) return std::nullopt;
    return panelOfWindow((__bridge CFTypeRef)sender);
}

class MacNotificationObserver final : public NotificationObserver {
public:
    explicit MacNotificationObserver(Observation observation)
        : observation_(std::move(observation)) {}

private:
    Observation observation_;
};

class MacNotifications final : public Notifications {
public:
    [[nodiscard]] std::unique_ptr<NotificationObserver> observe(
        NotificationName name, std::optional<PanelId> panel, std::string_view,
        std::function<void()> handler) override {
        return std::make_unique<MacNotificationObserver>(
            Observation(NoticeCenter::application, (__bridge CFStringRef)systemName(name),
                        [panel, handler = std::move(handler)](CFTypeRef notification) {
                            if (!panel || senderOf(notification) == panel) handler();
                        }));
    }
};

}  // namespace

std::unique_ptr<Notifications> makeNotifications() { return std::make_unique<MacNotifications>(); }

}  // namespace orvel::macos
