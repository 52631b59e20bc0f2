#include "engine/rules/forward_delete.hpp"

#include "engine/remap_model.hpp"

#include <string>

namespace orvel::rules {

namespace {

/// The row that is stored under `key`; a missing or unknown text counts as the default.
template <typename Table>
auto chosenRow(const Preferences& preferences, PreferenceKey key, const Table& table) {
    const auto* row = findLabel(table, preferences.shownText(key));
    return row == nullptr ? findLabel(table, preferenceInfo(key).defaultText) : row;
}

DeleteStrategy deleteStrategy(const Preferences& preferences) {
    return chosenRow(preferences, PreferenceKey::deleteStrategy, kDeleteStrategies)->value;
}

const ComboModifierRow& deleteComboMod(const Preferences& preferences) {
    return *chosenRow(preferences, PreferenceKey::deleteComboMod, kComboModifiers);
}

const SacrificeKeyRow& deleteSingleKey(const Preferences& preferences) {
    return *chosenRow(preferences, PreferenceKey::deleteSingleKey, kSacrificeKeys);
}

/// In the file manager forward delete moves files to the trash.
bool movesToTrash(const RuleContext& context) {
    return context.services.preferences.boolForKey(PreferenceKey::cardFinder) &&
           context.isFinderInFront();
}

RuleOutcome comboDelete(RuleContext& context) {
    const Event& event = context.incoming;
    if (event.keyCode != key::backspace) return std::nullopt;
    const ComboModifierRow& combo = deleteComboMod(context.services.preferences);
    if (!holds(event.flags, combo.required) || holdsAny(event.flags, combo.absent)) {
        return std::nullopt;
    }
    if (movesToTrash(context)) {
        context.services.log.line(
            "🗑 访达内触发组合 Del：伪装成 Cmd+Backspace 删文件！");
        return context.rewritten(key::backspace, flag::command);
    }
    context.services.log.line("🔪 捕获 " + std::string(combo.label) +
                              " + Backspace：瞬间替换为正向 Delete！");
    return context.rewritten(key::forwardDelete, event.flags & ~combo.required);
}

RuleOutcome sacrificeDelete(RuleContext& context) {
    const SacrificeKeyRow& sacrificed = deleteSingleKey(context.services.preferences);
    const bool isItsPress = sacrificed.value != SingleSacrificeKey::fn &&
                            context.incoming.keyCode == sacrificed.keyCode;
    if (!isItsPress) return std::nullopt;
    if (movesToTrash(context)) {
        context.services.log.line(
            "🗑 访达内触发单键 Del：伪装成 Cmd+Backspace 删文件！");
        return context.rewritten(key::backspace, flag::command);
    }
    return context.rewritten(key::forwardDelete, context.incoming.flags);
}

}  // namespace

RuleOutcome forwardDelete(RuleContext& context) {
    return deleteStrategy(context.services.preferences) == DeleteStrategy::combo
               ? comboDelete(context)
               : sacrificeDelete(context);
}

RuleOutcome fnSacrifice(RuleContext& context) {
    if (context.incoming.keyCode != key::fn) return std::nullopt;
    const Preferences& preferences = context.services.preferences;
    if (deleteStrategy(preferences) != DeleteStrategy::sacrifice ||
        deleteSingleKey(preferences).value != SingleSacrificeKey::fn) {
        return std::nullopt;
    }
    bool& isPress = context.state.fnSacrificeState;
    isPress = !isPress;
    if (!isPress) return std::nullopt;
    const bool trashes = movesToTrash(context);
    context.services.keystrokes.postKeystroke(trashes ? key::backspace : key::forwardDelete,
                                              trashes ? flag::command : flag::none);
    context.services.log.line(trashes ? "🔪 捕获 Fn 键翻转：发送 Cmd+Backspace"
                                      : "🔪 捕获 Fn 键翻转：发送 Delete");
    return std::nullopt;
}

}  // namespace orvel::rules
