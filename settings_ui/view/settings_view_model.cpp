#include "settings_ui/view/settings_view_model.hpp"

#include "settings_ui/settings_model.hpp"
#include "settings_ui/view/view_text.hpp"

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

namespace orvel::settings_view {

namespace {

/// Reading all settings costs microseconds, so nobody waits for what another process wrote.
constexpr std::chrono::milliseconds kReadAgain{100};

/// The cards with a live text come first.
constexpr auto kSpecialCards = static_cast<std::size_t>(
    std::ranges::find_if_not(kFeatureCards, &FeatureCard::hasLiveText) - kFeatureCards.begin());
static_assert(std::ranges::none_of(std::span(kFeatureCards).subspan(kSpecialCards),
                                   &FeatureCard::hasLiveText));

/// Whether a choice's number is its place in the table, which is what QML counts in.
template <typename Table>
constexpr bool isInOrder(const Table& table) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (static_cast<std::size_t>(table[i].value) != i) return false;
    }
    return true;
}
static_assert(isInOrder(kModifierTargets) && isInOrder(kDeleteStrategies) &&
              isInOrder(kComboModifiers) && isInOrder(kSacrificeKeys));

template <typename Table>
QString labelAt(const Table& table, int place) {
    return toQString(table[static_cast<std::size_t>(place)].label);
}

/// The choice at that place of its table; the first when QML asks for one that is not there.
template <typename Table>
auto choiceAt(const Table& table, int place) {
    const bool isThere = place >= 0 && static_cast<std::size_t>(place) < table.size();
    return table[isThere ? static_cast<std::size_t>(place) : 0].value;
}

}  // namespace

SettingsViewModel::SettingsViewModel(SettingsModel& settings, OnboardingModel& onboarding,
                                     const Published<bool>& isEnginePaused,
                                     std::function<void()> closePanel)
    : settings_(settings),
      isEnginePaused_(isEnginePaused),
      closePanel_(std::move(closePanel)),
      onboarding_(onboarding),
      specialCards_(settings, std::span(kFeatureCards).first(kSpecialCards)),
      cards_(settings, std::span(kFeatureCards).subspan(kSpecialCards)),
      keys_(settings.editor()),
      state_(readState()),
      revisionSubscription_(settings.revision().subscribe([this](auto) { refresh(); })),
      pauseSubscription_(isEnginePaused.subscribe([this](bool) { emit isPausedChanged(); })) {
    outsideChanges_.setInterval(kReadAgain);
    connect(&outsideChanges_, &QTimer::timeout, this, &SettingsViewModel::refresh);
}

QString SettingsViewModel::title() const { return toQString(panel_text::title); }
QString SettingsViewModel::subtitle() const { return toQString(panel_text::subtitle); }
QString SettingsViewModel::section() const { return toQString(panel_text::section); }
QString SettingsViewModel::deleteLabel() const { return toQString(panel_text::deleteLabel); }

QStringList SettingsViewModel::mapMenu() const { return toQStringList(mapMenuTitles()); }
QStringList SettingsViewModel::strategyMenu() const { return toQStringList(strategyMenuTitles()); }
QStringList SettingsViewModel::comboMenu() const { return toQStringList(comboMenuTitles()); }
QStringList SettingsViewModel::sacrificeMenu() const {
    return toQStringList(sacrificeMenuTitles());
}

QString SettingsViewModel::comboLabel() const {
    return labelAt(kComboModifiers, state_.comboModifier);
}

QString SettingsViewModel::sacrificeLabel() const {
    return labelAt(kSacrificeKeys, state_.sacrificeKey);
}

void SettingsViewModel::setShown(bool isShown) {
    if (isShown_ == isShown) return;
    isShown_ = isShown;
    onboarding_.setShown(isShown_);
    emit isShownChanged();
    if (isShown_) {
        settings_.appear();
        outsideChanges_.start();
    } else {
        outsideChanges_.stop();
    }
}

void SettingsViewModel::setCard(int place, bool isOn) {
    if (place < 0 || static_cast<std::size_t>(place) >= kFeatureCards.size()) return;
    settings_.setCard(kFeatureCards[static_cast<std::size_t>(place)].key, isOn);
}

void SettingsViewModel::setMaster(bool isOn) { settings_.setMaster(isOn); }

void SettingsViewModel::setMap(int row, int choice) {
    if (row < 0 || row >= keys_.rowCount({})) return;
    const auto map = kDrawnKeys[static_cast<std::size_t>(row)].map;
    if (map) settings_.setMap(*map, choiceAt(kModifierTargets, choice));
}

void SettingsViewModel::setStrategy(int choice) {
    settings_.setDeleteStrategy(choiceAt(kDeleteStrategies, choice));
}

void SettingsViewModel::setComboModifier(int choice) {
    settings_.setComboModifier(choiceAt(kComboModifiers, choice));
}

void SettingsViewModel::setSacrificeKey(int choice) {
    settings_.setSacrificeKey(choiceAt(kSacrificeKeys, choice));
}

void SettingsViewModel::resume() { settings_.resume(); }

void SettingsViewModel::close() { closePanel_(); }

SettingsViewModel::State SettingsViewModel::readState() const {
    const RemapEditorModel& editor = settings_.editor();
    State state{.isAllOn = settings_.isAllOn(),
                .isEjectOn = settings_.isCardOn(PreferenceKey::cardEject),
                .strategy = static_cast<int>(editor.strategy()),
                .comboModifier = static_cast<int>(editor.comboModifier()),
                .sacrificeKey = static_cast<int>(editor.sacrificeKey()),
                .deleteKeyFace = toQString(editor.deleteKeyFace()),
                .changedMaps = {}};
    if (!settings_.isCardOn(PreferenceKey::cardModifier)) return state;
    for (const ChangedMap& map : editor.changedMaps()) {
        state.changedMaps << toQString(map.label)
                          << labelAt(kModifierTargets, static_cast<int>(map.target));
    }
    return state;
}

void SettingsViewModel::refresh() {
    specialCards_.refresh();
    cards_.refresh();
    keys_.refresh();
    State state = readState();
    if (state == state_) return;
    state_ = std::move(state);
    emit changed();
}

}  // namespace orvel::settings_view
