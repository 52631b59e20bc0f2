#include "engine/rules/window_snap_keys.hpp"

namespace orvel::rules {

namespace {

std::optional<SnapDirection> directionOf(KeyCode code) {
    switch (code) {
        case key::leftArrow: return SnapDirection::left;
        case key::rightArrow: return SnapDirection::right;
        case key::upArrow: return SnapDirection::up;
        case key::downArrow: return SnapDirection::down;
        default: return std::nullopt;
    }
}

}  // namespace

RuleOutcome windowSnapKeys(RuleContext& context) {
    const auto direction = directionOf(context.incoming.keyCode);
    if (!direction || !context.isWinHeld() || context.isShiftHeld()) return std::nullopt;
    context.services.snapper.snapActiveWindow(*direction);
    return EngineDecision::swallow();
}

}  // namespace orvel::rules
