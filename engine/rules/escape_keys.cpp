#include "engine/rules/escape_keys.hpp"

namespace orvel::rules {

namespace {

RuleOutcome closeStartMenu(RuleContext& context) {
    EngineServices& services = context.services;
    if (!services.overlay.isStartMenuShowing()) return std::nullopt;
    services.log.line("🚪 捕获到纯净 Esc：自动关闭开始菜单");
    services.runLoop.post([&overlay = services.overlay] { overlay.toggleStartMenu(); });
    return EngineDecision::swallow();
}

RuleOutcome switchFunctionRow(RuleContext& context) {
    EngineServices& services = context.services;
    const bool becomesMedia = !services.preferences.boolForKey(PreferenceKey::cardFkeys);
    services.preferences.setBool(PreferenceKey::cardFkeys, becomesMedia);
    services.log.line(becomesMedia ? "📻 切换为：多媒体键模式 (音量/亮度)"
                                   : "💻 切换为：纯净编程模式 (F1-F12)");
    services.runLoop.post([&haptics = services.haptics] { haptics.tap(); });
    return EngineDecision::swallow();
}

}  // namespace

RuleOutcome escapeKeys(RuleContext& context) {
    if (context.incoming.keyCode != key::escape) return std::nullopt;
    constexpr EventFlags anyModifier = flag::command | flag::control | flag::option | flag::shift;
    const EventFlags flags = context.logicalFlags;
    if (!holdsAny(flags, anyModifier)) return closeStartMenu(context);
    const bool isSwitch =
        holds(flags, flag::option) && !holdsAny(flags, flag::command | flag::control);
    return isSwitch ? switchFunctionRow(context) : std::nullopt;
}

}  // namespace orvel::rules
