#include "engine/rules/win_key_tap.hpp"

#include "engine/synthesis/system_scripts.hpp"

#include <chrono>

namespace orvel::rules {

namespace {

constexpr Duration kStartMenuDelay = std::chrono::milliseconds(50);
constexpr Duration kShowDesktopDelay = std::chrono::milliseconds(200);

void openStartMenu(EngineServices& services) {
    services.log.line("🏁 完美单按 Win 键！呼出开始菜单！");
    services.runLoop.postAfter(kStartMenuDelay,
                               [&overlay = services.overlay] { overlay.toggleStartMenu(); });
}

void showDesktop(EngineServices& services) {
    services.runLoop.backgroundAfter(kShowDesktopDelay, [&runner = services.scriptRunner] {
        (void)runner.run(scripts::kShowDesktop);
    });
}

void onWinUp(RuleContext& context) {
    EngineState& state = context.state;
    if (state.isWinKeyStandaloneDown) {
        state.isWinKeyStandaloneDown = false;
        const bool opensMenu = !state.hasPressedOtherKeySinceWinKey &&
                               context.services.preferences.boolForKey(PreferenceKey::cardTaskbar);
        if (opensMenu) openStartMenu(context.services);
    }
    if (state.pendingShowDesktop) {
        state.pendingShowDesktop = false;
        showDesktop(context.services);
    }
}

}  // namespace

RuleOutcome winKeyTap(RuleContext& context) {
    EngineState& state = context.state;
    const EventFlags flags = context.outgoing.flags;
    if (!holds(flags, flag::control)) {
        onWinUp(context);
    } else if (!state.isWinKeyStandaloneDown &&
               !holdsAny(flags, flag::command | flag::option | flag::shift)) {
        state.isWinKeyStandaloneDown = true;
        state.hasPressedOtherKeySinceWinKey = false;
    }
    return std::nullopt;
}

}  // namespace orvel::rules
