#include "engine/rules/scroll_reversal.hpp"

namespace orvel::rules {

RuleOutcome reverseWheel(RuleContext& context) {
    if (context.incoming.hasPreciseScrollingDeltas) return EngineDecision::pass();
    Event reversed = context.incoming;
    reversed.pointDeltaAxis1 = -reversed.pointDeltaAxis1;
    reversed.deltaAxis1 = -reversed.deltaAxis1;
    return EngineDecision::modify(reversed);
}

}  // namespace orvel::rules
