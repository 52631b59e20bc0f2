#include "settings_ui/view/onboarding_view_model.hpp"

#include "settings_ui/essential_texts.hpp"
#include "settings_ui/onboarding_model.hpp"
#include "settings_ui/view/view_text.hpp"

namespace orvel::settings_view {

OnboardingViewModel::OnboardingViewModel(OnboardingModel& model)
    : model_(model),
      neededSubscription_(model.isNeeded().subscribe([this](bool) { emit isNeededChanged(); })),
      findingsSubscription_(model.findings().subscribe([this](const auto& findings) {
          findings_.show(findings);
          emit findingsChanged();
      })) {
    findings_.show(model.findings());
}

bool OnboardingViewModel::isNeeded() const { return model_.isNeeded(); }
bool OnboardingViewModel::isComplete() const { return model_.isComplete(); }

QString OnboardingViewModel::title() const {
    return toQString(isComplete() ? onboarding_text::readyTitle
                                  : onboarding_text::titleFor(model_.missing()));
}

QString OnboardingViewModel::subtitle() const {
    return toQString(isComplete() ? onboarding_text::readySubtitle : onboarding_text::subtitle);
}

QString OnboardingViewModel::there() const { return toQString(onboarding_text::there); }
QString OnboardingViewModel::retryText() const { return toQString(onboarding_text::retry); }
QString OnboardingViewModel::laterText() const { return toQString(onboarding_text::later); }
QString OnboardingViewModel::openSettingsText() const {
    return toQString(onboarding_text::openSettings);
}

void OnboardingViewModel::setShown(bool isShown) { model_.setShown(isShown); }

void OnboardingViewModel::retry() { model_.retry(); }

void OnboardingViewModel::openSettings(int row) {
    const auto& findings = findings_.findings();
    if (row < 0 || static_cast<std::size_t>(row) >= findings.size()) return;
    model_.openSettings(findings[static_cast<std::size_t>(row)].essential);
}

void OnboardingViewModel::dismiss() { model_.dismiss(); }

}  // namespace orvel::settings_view
