#include "app/replay/click_step.hpp"

#include <array>

namespace orvel::replay {

namespace {

enum class ClickType {
    leftMouseDown,
    rightMouseDown,
    otherMouseDown,
    keyDown,
    resignKey,
    resignActive,
};

constexpr std::array<std::string_view, 6> kClickTypes{
    "leftMouseDown", "rightMouseDown", "otherMouseDown", "keyDown", "resignKey", "resignActive"};

/// Where a click went; absent: into another application.
enum class ClickWindow { settings, taskbar, startMenu, clipboard, finderMenu, other };

constexpr std::array<std::string_view, 6> kClickWindows{"settings",  "taskbar",    "startMenu",
                                                        "clipboard", "finderMenu", "other"};

struct Click {
    ClickType type = ClickType::leftMouseDown;
    KeyCode keyCode = 0;
    std::optional<ClickWindow> window;
};

void readClick(const JsonField& field, Click& into) {
    ObjectReader object(field);
    object.requiredName("type", kClickTypes, into.type);
    object.optional("key", into.keyCode);
    const Json* window = object.take("window");
    if (window != nullptr && !window->isNull()) {
        std::size_t place = 0;
        readName(field.member("window", *window), kClickWindows, place);
        into.window = static_cast<ClickWindow>(place);
    }
    object.finish();
    if (into.type == ClickType::resignKey && !into.window) field.fail("window is missing");
}

EventMask maskOf(ClickType type) {
    switch (type) {
        case ClickType::leftMouseDown: return monitor_mask::leftMouseDown;
        case ClickType::rightMouseDown: return monitor_mask::rightMouseDown;
        case ClickType::otherMouseDown: return monitor_mask::otherMouseDown;
        default: return monitor_mask::keyDown;
    }
}

std::optional<PanelId> panelOf(ClickWindow window) {
    return panelNamed(kClickWindows[static_cast<std::size_t>(window)]);
}

void deliver(const Click& click, memory::MemoryDesktop& desktop) {
    MonitoredEvent event{.type = maskOf(click.type), .keyCode = click.keyCode, .window = {}};
    if (!click.window) {
        desktop.eventMonitors.deliver(MonitorScope::global, event);
        return;
    }
    event.window = panelOf(*click.window);
    const bool isDelivered = desktop.eventMonitors.deliver(MonitorScope::local, event);
    desktop.effects.effect("delivered")->value(isDelivered);
}

}  // namespace

void runClick(const JsonField& field, ReplaySession& session) {
    Click click;
    readClick(field, click);
    if (field.hasFailed()) return;
    session.application();
    auto& notifications = session.desktop.notifications;
    if (click.type == ClickType::resignKey) {
        notifications.post(NotificationName::windowDidResignKey, panelOf(*click.window));
    } else if (click.type == ClickType::resignActive) {
        notifications.post(NotificationName::applicationDidResignActive, std::nullopt);
    } else {
        deliver(click, session.desktop);
    }
}

}  // namespace orvel::replay
