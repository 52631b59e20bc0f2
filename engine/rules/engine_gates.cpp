#include "engine/rules/engine_gates.hpp"

namespace orvel::rules {

RuleOutcome requireWindowsMode(RuleContext& context) {
    if (context.state.isWindowsModeEnabled.get()) return std::nullopt;
    return EngineDecision::pass();
}

RuleOutcome trackOtherKeys(RuleContext& context) {
    context.state.hasPressedOtherKeySinceShift = true;
    context.state.hasPressedOtherKeySinceOption = true;
    context.state.hasPressedOtherKeySinceWinKey = true;
    return std::nullopt;
}

RuleOutcome requireRunning(RuleContext& context) {
    if (!context.state.isPaused.get()) return std::nullopt;
    return EngineDecision::pass();
}

}  // namespace orvel::rules
