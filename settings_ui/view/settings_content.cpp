#include "settings_ui/view/settings_content.hpp"

#include "platform/qt/panel_content.hpp"
#include "settings_ui/view/settings_view_model.hpp"

#include <QUrl>
#include <QVariant>

#include <utility>

namespace orvel::settings_view {

SettingsContent::SettingsContent(qt::PanelContentHost& panels, SettingsModel& settings,
                                 OnboardingModel& onboarding, const Published<bool>& isEnginePaused,
                                 std::function<void()> closePanel)
    : panels_(panels),
      viewModel_(std::make_unique<SettingsViewModel>(settings, onboarding, isEnginePaused,
                                                     std::move(closePanel))) {
    panels_.setContent(PanelId::settings,
                       {QUrl(QStringLiteral("qrc:/qt/qml/Orvel/Settings/ContentView.qml")),
                        {{QStringLiteral("vm"), QVariant::fromValue(viewModel_.get())}}});
}

SettingsContent::~SettingsContent() { panels_.removeContent(PanelId::settings); }

}  // namespace orvel::settings_view
