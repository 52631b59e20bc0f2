#include "engine/rules/option_menu_search.hpp"

namespace orvel::rules {

namespace {

void endAppSwitcher(RuleContext& context, EventFlags flags) {
    context.services.log.line(
        "🚀 逻辑 Option 键已抬起！向系统伪造 Command 键的释放信号，完美自动切换！");
    context.state.isFakingAppSwitcher = false;
    context.services.keystrokes.postModifierRelease(flags & ~(flag::command | flag::option));
}

void onOptionUp(RuleContext& context) {
    context.state.isOptionKeyDown = false;
    if (context.state.hasPressedOtherKeySinceOption || !context.state.isAltMenuEnabled) return;
    context.services.log.line(
        "✨ 单按逻辑 Option 触发：发射 Cmd + Shift + / 激活顶部帮助菜单搜索框！");
    context.services.keystrokes.postKeystroke(key::slash, flag::command | flag::shift);
}

}  // namespace

RuleOutcome optionMenuSearch(RuleContext& context) {
    EngineState& state = context.state;
    const EventFlags flags = context.outgoing.flags;
    const bool optionHeld = holds(flags, flag::option);
    if (!optionHeld) {
        // The release that ends the switcher does nothing else: it is no lone press.
        if (state.isFakingAppSwitcher) {
            endAppSwitcher(context, flags);
        } else if (state.isOptionKeyDown) {
            onOptionUp(context);
        }
    } else if (!state.isOptionKeyDown &&
               !holdsAny(flags, flag::command | flag::control | flag::shift)) {
        state.isOptionKeyDown = true;
        state.hasPressedOtherKeySinceOption = false;
    }
    return std::nullopt;
}

}  // namespace orvel::rules
