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

/// A key that was rewritten to itself passes; a wheel counts as rewritten even when it stood still.
EngineDecision finished(RuleContext& context, const EngineDecision& decision) {
    if (decision.kind() != EngineDecision::Kind::modify) return decision;
    if (context.incoming.type == EventType::scrollWheel) return decision;
    if (decision.event() == context.incoming) return EngineDecision::pass();
    const bool isPress = context.isKeyDown() && !context.incoming.isAutorepeat;
    if (isPress) traceRewrite(context.services.log, context.incoming, decision.event());
    return decision;
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
    for (const Rule& rule : ruleTable()) {
        if ((rule.events & maskOf(event.type)) == 0 || !rule.gate.isOpen(context)) continue;
        const RuleOutcome outcome = rule.apply(context);
        if (!outcome) continue;
        if (rule.release == Release::followsPress) record(context, *outcome);
        return finished(context, *outcome);
    }
    return finished(context, EngineDecision::modify(context.outgoing));
}

}  // namespace orvel
