#include "engine/rule.hpp"

namespace orvel {

EngineDecision RuleContext::rewritten(KeyCode keyCode, EventFlags flags) const {
    Event event = incoming;
    event.keyCode = keyCode;
    event.flags = flags;
    return EngineDecision::modify(event);
}

EngineDecision RuleContext::undecided() const {
    return outgoing == incoming ? EngineDecision::pass() : EngineDecision::modify(outgoing);
}

bool RuleContext::isFinderInFront() const {
    const auto front = services.workspace.frontmostApplication();
    return front && front->bundleId == "com.apple.finder";
}

}  // namespace orvel
