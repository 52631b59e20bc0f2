#pragma once

#include "platform/base/published.hpp"

#include <functional>
#include <memory>

namespace orvel {

class OnboardingModel;
class SettingsModel;
namespace qt {
class PanelContentHost;
}

namespace settings_view {

class SettingsViewModel;

/// Fills the settings panel of a host while it lives.
class SettingsContent {
public:
    /// `closePanel` hides the panel.
    SettingsContent(qt::PanelContentHost& panels, SettingsModel& settings,
                    OnboardingModel& onboarding, const Published<bool>& isEnginePaused,
                    std::function<void()> closePanel);
    ~SettingsContent();
    SettingsContent(const SettingsContent&) = delete;
    SettingsContent& operator=(const SettingsContent&) = delete;

private:
    qt::PanelContentHost& panels_;
    std::unique_ptr<SettingsViewModel> viewModel_;
};

}  // namespace settings_view
}  // namespace orvel
