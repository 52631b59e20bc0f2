#include "app/replay/calls.hpp"
#include "settings_ui/feature_cards.hpp"
#include "settings_ui/keyboard_drawing.hpp"

#include <array>

namespace orvel::replay {

namespace {

template <typename Table, typename Name>
constexpr auto namesOf(const Table& table, Name name) {
    std::array<std::string_view, std::tuple_size_v<Table>> names{};
    for (std::size_t i = 0; i < table.size(); ++i) names[i] = name(table[i]);
    return names;
}

template <typename Table>
constexpr auto labelsOf(const Table& table) {
    return namesOf(table, [](const auto& row) { return row.label; });
}

constexpr auto kCardNames =
    namesOf(kFeatureCards, [](const FeatureCard& card) { return preferenceInfo(card.key).name; });

constexpr std::array kMaps{PreferenceKey::mapCtrl, PreferenceKey::mapOption, PreferenceKey::mapCmd,
                           PreferenceKey::mapRightCmd, PreferenceKey::mapRightOption};
constexpr auto kMapNames =
    namesOf(kMaps, [](PreferenceKey map) { return preferenceInfo(map).name; });

/// The member `value` as one of the labels of `table`; the call hands its choice to `operation`.
template <typename Table, typename Operation>
Call withChoice(ObjectReader& arguments, const Table& table, Operation operation) {
    const auto labels = labelsOf(table);
    std::size_t place = 0;
    arguments.requiredName("value", labels, place);
    return always([choice = table[place].value, operation](ReplaySession& session) {
        operation(session.application().settings(), choice);
    });
}

}  // namespace

Call settingsAppear(ObjectReader&) {
    return always([](ReplaySession& session) { session.application().settings().appear(); });
}

Call settingsSetCard(ObjectReader& arguments) {
    std::size_t place = 0;
    bool value = false;
    arguments.requiredName("key", kCardNames, place);
    arguments.required("value", value);
    return always([card = kFeatureCards[place].key, value](ReplaySession& session) {
        session.application().settings().setCard(card, value);
    });
}

Call settingsSetMaster(ObjectReader& arguments) {
    bool value = false;
    arguments.required("value", value);
    return always(
        [value](ReplaySession& session) { session.application().settings().setMaster(value); });
}

Call settingsSetMap(ObjectReader& arguments) {
    std::size_t place = 0;
    arguments.requiredName("key", kMapNames, place);
    return withChoice(arguments, kModifierTargets,
                      [map = kMaps[place]](SettingsModel& settings, ModifierTarget target) {
                          settings.setMap(map, target);
                      });
}

Call settingsSetDelete(ObjectReader& arguments) {
    constexpr std::array<std::string_view, 3> names{"delete_strategy", "delete_combo_mod",
                                                    "delete_single_key"};
    std::size_t place = 0;
    arguments.requiredName("key", names, place);
    switch (place) {
        case 0:
            return withChoice(arguments, kDeleteStrategies,
                              [](SettingsModel& settings, DeleteStrategy strategy) {
                                  settings.setDeleteStrategy(strategy);
                              });
        case 1:
            return withChoice(arguments, kComboModifiers,
                              [](SettingsModel& settings, ComboModifier modifier) {
                                  settings.setComboModifier(modifier);
                              });
        default:
            return withChoice(arguments, kSacrificeKeys,
                              [](SettingsModel& settings, SingleSacrificeKey key) {
                                  settings.setSacrificeKey(key);
                              });
    }
}

}  // namespace orvel::replay
