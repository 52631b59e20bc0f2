#include "settings_ui/settings_model.hpp"

#include "app/preferences.hpp"
#include "engine/orvel_engine.hpp"
#include "settings_ui/feature_cards.hpp"
#include "settings_ui/taskbar_switch.hpp"

#include <algorithm>

namespace orvel {

SettingsModel::SettingsModel(Preferences& preferences, OrvelEngine& engine, TaskbarSwitch& taskbar)
    : preferences_(preferences), engine_(engine), taskbar_(taskbar), editor_(preferences) {}

void SettingsModel::appear() {
    if (!preferences_.shownFlag(PreferenceKey::hasWipedOldData)) {
        preferences_.setBool(PreferenceKey::hasWipedOldData, true);
    }
    copySwitchesToEngine();
    enableEngine();
    revision_.set(revision_ + 1);
}

bool SettingsModel::isCardOn(PreferenceKey card) const { return preferences_.shownFlag(card); }

bool SettingsModel::isAllOn() const {
    return std::ranges::all_of(kFeatureCards,
                               [this](const FeatureCard& card) { return isCardOn(card.key); });
}

bool SettingsModel::isAnyOn() const {
    return std::ranges::any_of(kFeatureCards,
                               [this](const FeatureCard& card) { return isCardOn(card.key); });
}

void SettingsModel::setCard(PreferenceKey card, bool isOn) {
    writeCard(card, isOn);
    if (card == PreferenceKey::cardModifier && isOn) editor_.applyPresetToUntouchedMaps();
    finishAction();
}

void SettingsModel::setMaster(bool isOn) {
    for (const FeatureCard& card : kFeatureCards) writeCard(card.key, isOn);
    if (isOn) editor_.applyPresetToUntouchedMaps();
    finishAction();
}

void SettingsModel::setMap(PreferenceKey map, ModifierTarget target) {
    editor_.setTarget(map, target);
    finishAction();
}

void SettingsModel::setDeleteStrategy(DeleteStrategy strategy) {
    editor_.setStrategy(strategy);
    finishAction();
}

void SettingsModel::setComboModifier(ComboModifier modifier) {
    editor_.setComboModifier(modifier);
    finishAction();
}

void SettingsModel::setSacrificeKey(SingleSacrificeKey key) {
    editor_.setSacrificeKey(key);
    finishAction();
}

void SettingsModel::resume() { engine_.setPaused(false); }

void SettingsModel::writeCard(PreferenceKey card, bool isOn) {
    const bool wasOn = isCardOn(card);
    preferences_.setBool(card, isOn);
    if (card == PreferenceKey::cardMouseSide) engine_.setMouseSideButtonEnabled(isOn);
    if (card == PreferenceKey::cardAltMenu) engine_.setAltMenuEnabled(isOn);
    if (card == PreferenceKey::cardTaskbar && isOn != wasOn) taskbar_.setTaskbarEnabled(isOn);
}

void SettingsModel::copySwitchesToEngine() {
    engine_.setMouseSideButtonEnabled(isCardOn(PreferenceKey::cardMouseSide));
    engine_.setAltMenuEnabled(isCardOn(PreferenceKey::cardAltMenu));
}

void SettingsModel::enableEngine() {
    lastEnabled_ = isAnyOn();
    engine_.setWindowsModeEnabled(*lastEnabled_);
}

void SettingsModel::finishAction() {
    if (lastEnabled_ && *lastEnabled_ != isAnyOn()) enableEngine();
    revision_.set(revision_ + 1);
}

}  // namespace orvel
