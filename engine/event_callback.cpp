#include "engine/event_callback.hpp"

#include "engine/logical_flags.hpp"
#include "engine/rule.hpp"
#include "engine/rule_table.hpp"
#include "engine/trace_log.hpp"

namespace orvel {

namespace {

/// The hardware reports physical modifiers on every event, whatever an earlier one was rewritten
/// to: what the person means is computed anew each time.
EventFlags logicalFlagsOf(const Event& event, const Preferences& preferences) {
    constexpr EventMask translated =
        maskOf(EventType::keyDown) | maskOf(EventType::keyUp) | maskOf(EventType::flagsChanged);
    const bool isTranslated = (maskOf(event.type) & translated) != 0 &&
                              preferences.boolForKey(PreferenceKey::cardModifier);
    return isTranslated ? translatedFlags(event.flags, preferences) : event.flags;
}

void record(RuleContext& context, const EngineDecision& decision) {
    const KeyCode code = context.incoming.keyCode;
    if (decision.kind() == EngineDecision::Kind::swallow) {
        context.ledger.recordSwallowed(code);
    } else if (decision.kind() == EngineDecision::Kind::modify) {
        context.ledger.recordRemap(code, {decision.event().keyCode, decision.event().flags});
    }
}

void trace(const RuleContext& context, const EngineDecision& decision) {
    const bool isPress = context.isKeyDown() && !context.incoming.isAutorepeat;
    if (isPress && decision.kind() == EngineDecision::Kind::modify) {
        traceRewrite(context.services.log, context.incoming, decision.event());
    }
}

EngineDecision decide(RuleContext& context) {
    for (const Rule& rule : ruleTable()) {
        if ((rule.events & maskOf(context.incoming.type)) == 0) continue;
        if (!rule.gate.isOpen(context)) continue;
        const RuleOutcome outcome = rule.apply(context);
        if (!outcome) continue;
        if (rule.release == Release::followsPress) record(context, *outcome);
        return *outcome;
    }
    return context.undecided();
}

}  // namespace

EngineDecision orvelEventCallback(const Event& event, EngineState& state,
                                  EngineServices& services) {
    RuleContext context{.incoming = event,
                        .outgoing = event,
                        .logicalFlags = logicalFlagsOf(event, services.preferences),
                        .state = state,
                        .ledger = KeyLedger(state),
                        .services = services};
    const EngineDecision decision = decide(context);
    trace(context, decision);
    return decision;
}

}  // namespace orvel
