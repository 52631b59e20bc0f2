#include "engine/rules/app_switcher.hpp"

namespace orvel::rules {

namespace {

RuleOutcome showAllWindows(EngineServices& services) {
    services.runLoop.post(
        [&launcher = services.launcher] { launcher.openApplicationNamed("Mission Control"); });
    return EngineDecision::swallow();
}

}  // namespace

RuleOutcome appSwitcher(RuleContext& context) {
    if (context.incoming.keyCode != key::tab) return std::nullopt;
    if (context.isWinHeld()) return showAllWindows(context.services);

    const EventFlags flags = context.logicalFlags;
    const bool isAltHeld =
        holds(flags, flag::option) && !holdsAny(flags, flag::command | flag::control);
    if (!isAltHeld) return std::nullopt;
    // The switcher stays open until the release of Option reports Command as released.
    context.state.isFakingAppSwitcher = true;
    return context.rewritten(key::tab, (flags & ~flag::option) | flag::command);
}

}  // namespace orvel::rules
