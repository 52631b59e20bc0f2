#include "settings_ui/onboarding_model.hpp"

#include "engine/orvel_engine.hpp"
#include "platform/launcher.hpp"
#include "settings_ui/essential_texts.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvel {

namespace {

constexpr Duration kCheckInterval = std::chrono::seconds(1);
/// Long enough to see that everything is ticked.
constexpr Duration kFarewell = std::chrono::milliseconds(1200);

}  // namespace

OnboardingModel::OnboardingModel(Essentials& essentials, Launcher& launcher, RunLoop& runLoop,
                                 OrvelEngine& engine)
    : essentials_(essentials), launcher_(launcher), runLoop_(runLoop), engine_(engine) {}

void OnboardingModel::setShown(bool isShown) {
    givesWay_.reset();
    if (!isShown) {
        nextCheck_.reset();
        return;
    }
    isDismissed_ = false;
    isNeeded_.set(false);
    check();
    nextCheck_ = runLoop_.every(kCheckInterval, "onboarding", [this] { check(); });
}

std::ptrdiff_t OnboardingModel::missing() const {
    return std::ranges::count(findings_.get(), false, &EssentialFinding::isThere);
}

void OnboardingModel::retry() {
    engine_.start();
    check();
}

void OnboardingModel::openSettings(Essential essential) {
    const auto url = textOf(essential).settingsUrl;
    if (!url.empty()) launcher_.openUrl(url);
}

void OnboardingModel::dismiss() {
    isDismissed_ = true;
    isNeeded_.set(false);
}

void OnboardingModel::check() {
    auto found = essentials_.check();
    if (isAnyMendedBy(found)) {
        engine_.start();
        found = essentials_.check();
    }
    findings_.set(std::move(found));
    if (!isComplete()) {
        givesWay_.reset();
        isNeeded_.set(!isDismissed_);
    } else if (isNeeded_ && !givesWay_) {
        givesWay_ = runLoop_.after(kFarewell, [this] { isNeeded_.set(false); });
    }
}

bool OnboardingModel::isAnyMendedBy(const std::vector<EssentialFinding>& found) const {
    return std::ranges::any_of(found, [this](const EssentialFinding& now) {
        const auto& before = findings_.get();
        return now.isThere &&
               std::ranges::find(before, EssentialFinding{now.essential, false}) != before.end();
    });
}

}  // namespace orvel
