#pragma once

#include "app/absent_rooms.hpp"
#include "app/app_delegate.hpp"
#include "app/dock_restorer.hpp"
#include "app/login_item.hpp"
#include "app/preferences.hpp"
#include "app/settings_panel.hpp"
#include "app/single_instance.hpp"
#include "app/status_item_controller.hpp"
#include "engine/orvel_engine.hpp"
#include "platform/desktop.hpp"
#include "settings_ui/onboarding_model.hpp"
#include "settings_ui/settings_model.hpp"

namespace orvel {

/// Composition root: owns one of every manager and builds them in start order. The desktop
/// outlives it. Main thread.
class Application {
public:
    explicit Application(Desktop& desktop);

    [[nodiscard]] Preferences& preferences() { return preferences_; }
    [[nodiscard]] OrvelEngine& engine() { return engine_; }
    [[nodiscard]] SettingsModel& settings() { return settings_; }
    [[nodiscard]] OnboardingModel& onboarding() { return onboarding_; }
    [[nodiscard]] SettingsPanel& settingsPanel() { return settingsPanel_; }
    [[nodiscard]] StatusItemController& statusItem() { return statusItem_; }
    [[nodiscard]] AppDelegate& delegate() { return delegate_; }

private:
    Preferences preferences_;
    AbsentOverlay overlay_;
    AbsentClipboard clipboard_;
    AbsentFinderMenu finderMenu_;
    AbsentWindowPictures windowPictures_;
    OrvelEngine engine_;
    SettingsModel settings_;
    OnboardingModel onboarding_;
    LoginItem loginItem_;
    SettingsPanel settingsPanel_;
    StatusItemController statusItem_;
    SingleInstance singleInstance_;
    DockRestorer dockRestorer_;
    AppDelegate delegate_;
};

}  // namespace orvel
