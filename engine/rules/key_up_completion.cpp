#include "engine/rules/key_up_completion.hpp"

namespace orvel::rules {

RuleOutcome heldKeys(RuleContext& context) {
    if (!context.incoming.isAutorepeat) return std::nullopt;
    const KeyCode code = context.incoming.keyCode;
    if (context.ledger.isSwallowed(code)) {
        if (const auto mediaKey = mediaKeyOf(code))
            context.services.mediaKeys.postMediaKey(*mediaKey);
        return EngineDecision::swallow();
    }
    if (const auto target = context.ledger.remap(code)) {
        return context.rewritten(target->keyCode, target->flags);
    }
    context.outgoing.flags = context.logicalFlags;
    return context.undecided();
}

RuleOutcome forgetLostRelease(RuleContext& context) {
    context.ledger.forget(context.incoming.keyCode);
    return std::nullopt;
}

RuleOutcome keyUpCompletion(RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    const auto target = context.ledger.remap(code);
    const bool wasSwallowed = context.ledger.isSwallowed(code);
    if (!wasSwallowed && !target) return std::nullopt;
    context.ledger.forget(code);
    if (wasSwallowed) return EngineDecision::swallow();
    return context.rewritten(target->keyCode, target->flags);
}

}  // namespace orvel::rules
