#include "settings_ui/remap_editor_model.hpp"

#include "app/preferences.hpp"
#include "settings_ui/keyboard_drawing.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace orvel {

namespace {

constexpr std::array kPreset{
    std::pair{PreferenceKey::mapCtrl, ModifierTarget::cmd},
    std::pair{PreferenceKey::mapOption, ModifierTarget::alt},
    std::pair{PreferenceKey::mapCmd, ModifierTarget::win},
    std::pair{PreferenceKey::mapRightCmd, ModifierTarget::alt},
    std::pair{PreferenceKey::mapRightOption, ModifierTarget::win},
};

constexpr std::string_view kBackspaceSymbol = "⌫";
constexpr std::string_view kForwardDeleteSymbol = "⌦";

template <typename Table, typename Value>
std::string labelOf(const Table& table, Value value) {
    const auto row = std::ranges::find(table, value, [](const auto& entry) { return entry.value; });
    return std::string(row->label);
}

/// The stored choice, or `fallback` when the stored text is none.
template <typename Table, typename Value>
Value choiceIn(const Table& table, std::string_view stored, Value fallback) {
    const auto* row = findLabel(table, stored);
    return row == nullptr ? fallback : row->value;
}

template <typename Table, typename Title>
std::vector<std::string> titlesOf(const Table& table, Title title) {
    std::vector<std::string> titles;
    for (const auto& row : table) titles.push_back(title(row));
    return titles;
}

}  // namespace

RemapEditorModel::RemapEditorModel(Preferences& preferences) : preferences_(preferences) {}

ModifierTarget RemapEditorModel::target(PreferenceKey map) const {
    return choiceIn(kModifierTargets, preferences_.shownText(map), ModifierTarget::itself);
}

bool RemapEditorModel::isRemapped(PreferenceKey map) const {
    return target(map) != ModifierTarget::itself;
}

void RemapEditorModel::setTarget(PreferenceKey map, ModifierTarget target) {
    preferences_.setString(map, labelOf(kModifierTargets, target));
}

DeleteStrategy RemapEditorModel::strategy() const {
    return choiceIn(kDeleteStrategies, preferences_.shownText(PreferenceKey::deleteStrategy),
                    DeleteStrategy::combo);
}

ComboModifier RemapEditorModel::comboModifier() const {
    return choiceIn(kComboModifiers, preferences_.shownText(PreferenceKey::deleteComboMod),
                    ComboModifier::shift);
}

SingleSacrificeKey RemapEditorModel::sacrificeKey() const {
    return choiceIn(kSacrificeKeys, preferences_.shownText(PreferenceKey::deleteSingleKey),
                    SingleSacrificeKey::f12);
}

void RemapEditorModel::setStrategy(DeleteStrategy strategy) {
    preferences_.setString(PreferenceKey::deleteStrategy, labelOf(kDeleteStrategies, strategy));
}

void RemapEditorModel::setComboModifier(ComboModifier modifier) {
    preferences_.setString(PreferenceKey::deleteComboMod, labelOf(kComboModifiers, modifier));
}

void RemapEditorModel::setSacrificeKey(SingleSacrificeKey key) {
    preferences_.setString(PreferenceKey::deleteSingleKey, labelOf(kSacrificeKeys, key));
}

void RemapEditorModel::applyPresetToUntouchedMaps() {
    // A text that is no choice is the user's own all the same, so the stored text counts here.
    const bool isUntouched = std::ranges::all_of(kPreset, [this](const auto& row) {
        return preferences_.shownText(row.first) == kUnmappedKey;
    });
    if (!isUntouched) return;
    for (const auto& [map, target] : kPreset) setTarget(map, target);
}

std::vector<ChangedMap> RemapEditorModel::changedMaps() const {
    std::vector<ChangedMap> changed;
    for (const DrawnKey& key : kDrawnKeys) {
        if (key.map && isRemapped(*key.map)) changed.push_back({key.listLabel, target(*key.map)});
    }
    return changed;
}

std::string RemapEditorModel::modifierText() const {
    if (!preferences_.shownFlag(PreferenceKey::cardModifier)) {
        return "已关闭。开启后将恢复您的自定义键位或初始预设。";
    }
    std::string text;
    for (const ChangedMap& map : changedMaps()) {
        if (!text.empty()) text += "  ";
        text += std::string(map.label) + "→" + labelOf(kModifierTargets, map.target);
    }
    return text.empty() ? "当前未修改任何修饰键，处于 Mac 原生状态" : text;
}

std::string RemapEditorModel::describedMaps() const {
    std::string text;
    for (const ChangedMap& map : changedMaps()) {
        if (!text.empty()) text += "，";
        text += std::string(map.label) + " 键作为 " + labelOf(kModifierTargets, map.target);
    }
    return text;
}

std::string RemapEditorModel::modifierHelp() const {
    const std::string maps = describedMaps();
    const std::string state = maps.empty() ? "所有修饰键都保持原样。" : "您的键位：" + maps + "。";
    const bool isWaiting = !maps.empty() && !preferences_.shownFlag(PreferenceKey::cardModifier);
    const std::string effect = isWaiting ? "此功能已关闭，开启后才会生效。" : "";
    return state + effect +
           "在键盘图上点按按键即可更改。输入时，右侧的 cmd 和 opt 键跟随左侧同名键。";
}

std::string RemapEditorModel::ejectText() const {
    if (!preferences_.shownFlag(PreferenceKey::cardEject)) return "已关闭。";
    return "设置一个自定义快捷键或牺牲特定单按键来实现 Windows 风格的正向删除操作。";
}

std::string RemapEditorModel::ejectHelp() const {
    const std::string keys = strategy() == DeleteStrategy::combo
                                 ? labelOf(kComboModifiers, comboModifier()) + " + Backspace"
                                 : labelOf(kSacrificeKeys, sacrificeKey()) + " 键";
    const std::string tense =
        preferences_.shownFlag(PreferenceKey::cardEject) ? "现在" : "开启后，";
    return tense + "按 " + keys +
           " 会删除光标后面的字符；在访达中则将所选项目移到废纸篓。可在键盘图上方的「正向删除」中更"
           "改。";
}

std::string RemapEditorModel::deleteKeyFace() const {
    if (!preferences_.shownFlag(PreferenceKey::cardEject)) return std::string(kBackspaceSymbol);
    if (strategy() == DeleteStrategy::combo) {
        return labelOf(kComboModifiers, comboModifier()) + " + " + std::string(kBackspaceSymbol);
    }
    return labelOf(kSacrificeKeys, sacrificeKey()) + " → " + std::string(kForwardDeleteSymbol);
}

std::vector<std::string> mapMenuTitles() {
    return titlesOf(kModifierTargets, [](const auto& row) {
        return row.value == ModifierTarget::itself ? "恢复默认"
                                                   : "映射为: " + std::string(row.label);
    });
}

std::vector<std::string> strategyMenuTitles() {
    return titlesOf(kDeleteStrategies, [](const auto& row) { return std::string(row.label); });
}

std::vector<std::string> comboMenuTitles() {
    return titlesOf(kComboModifiers,
                    [](const auto& row) { return std::string(row.label) + " + Backspace"; });
}

std::vector<std::string> sacrificeMenuTitles() {
    return titlesOf(kSacrificeKeys,
                    [](const auto& row) { return "✓ 牺牲 " + std::string(row.label); });
}

}  // namespace orvel
