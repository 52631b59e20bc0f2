#include "engine/rules/own_events.hpp"

namespace orvel::rules {

RuleOutcome passOwnEvents(RuleContext& context) {
    if (context.incoming.userData != kSyntheticMarker) return std::nullopt;
    return EngineDecision::pass();
}

}  // namespace orvel::rules
