#include "app/settings_panel.hpp"

#include "platform/app_control.hpp"
#include "platform/screens.hpp"
#include "platform/status_bar.hpp"

#include <chrono>

namespace orvel {

namespace {

constexpr double kRightMargin = 10;
constexpr double kGapBelowButton = 8;
constexpr EventMask kAnyPress = monitor_mask::leftMouseDown | monitor_mask::rightMouseDown;
constexpr std::string_view kMonitorOwner = "settings";

/// Longer than the button is down in a click, shorter than the way from somewhere else.
constexpr Duration kOneClick = std::chrono::milliseconds(300);

}  // namespace

ScreenRect settingsPanelFrame(ScreenRect button, const std::optional<ScreenRect>& visibleFrame) {
    const auto [width, height] = kSettingsPanelSize;
    double x = button.midX() - width / 2;
    if (visibleFrame && visibleFrame->maxX() - kRightMargin < x + width) {
        x = visibleFrame->maxX() - width - kRightMargin;
    }
    return {x, button.minY() - height - kGapBelowButton, width, height};
}

SettingsPanel::SettingsPanel(SettingsPanelPorts ports) : ports_(ports) {}

bool SettingsPanel::isVisible() const { return mainWindow_ && mainWindow_->isVisible(); }

void SettingsPanel::toggle() {
    createOnce();
    if (isVisible()) {
        hide();
    } else {
        show();
    }
}

void SettingsPanel::show() {
    createOnce();
    if (!isVisible()) placeBelowStatusItem();
    mainWindow_->makeKeyAndOrderFront();
    ports_.appControl.activateSelf();
    removeClickMonitors();
    installClickMonitors();
}

void SettingsPanel::hide() {
    if (mainWindow_) mainWindow_->orderOut();
    removeClickMonitors();
}

bool SettingsPanel::wasJustClosedByPress() const {
    return closedByPressAt_ && ports_.runLoop.now() - *closedByPressAt_ < kOneClick;
}

void SettingsPanel::createOnce() {
    if (mainWindow_) return;
    const auto [width, height] = kSettingsPanelSize;
    mainWindow_ = ports_.panels.create({.id = PanelId::settings,
                                        .contentRect = {0, 0, width, height},
                                        .styleMask = kStyleNonactivatingPanel,
                                        .hasShadow = true,
                                        .canBecomeKey = true});
}

void SettingsPanel::placeBelowStatusItem() {
    const auto button = ports_.statusBar.buttonFrame();
    if (!button) return;
    const ScreenPoint centre{button->midX(), button->midY()};
    mainWindow_->setFrame(settingsPanelFrame(*button, visibleFrameAround(centre)));
}

std::optional<ScreenRect> SettingsPanel::visibleFrameAround(ScreenPoint point) const {
    for (const Screen& screen : ports_.screens.screens()) {
        if (screen.frame.contains(point)) return screen.visibleFrame;
    }
    return std::nullopt;
}

void SettingsPanel::installClickMonitors() {
    globalClickMonitor_ = ports_.eventMonitors.add(MonitorScope::global, kAnyPress, kMonitorOwner,
                                                   [this](const MonitoredEvent&) {
                                                       closeByPress();
                                                       return true;
                                                   });
    localClickMonitor_ = ports_.eventMonitors.add(
        MonitorScope::local, kAnyPress, kMonitorOwner, [this](const MonitoredEvent& event) {
            const bool isInside = isVisible() && event.window == PanelId::settings;
            if (!isInside) closeByPress();
            return true;
        });
}

void SettingsPanel::removeClickMonitors() {
    globalClickMonitor_.reset();
    localClickMonitor_.reset();
}

void SettingsPanel::closeByPress() {
    closedByPressAt_ = ports_.runLoop.now();
    hide();
}

}  // namespace orvel
