#include "engine/rules/modifier_remap.hpp"

#include "engine/logical_flags.hpp"

namespace orvel::rules {

RuleOutcome remapModifierKey(RuleContext& context) {
    context.outgoing.flags = context.logicalFlags;
    context.outgoing.keyCode =
        translatedModifierKey(context.incoming.keyCode, context.services.preferences);
    return std::nullopt;
}

RuleOutcome remapKeyModifiers(RuleContext& context) {
    context.outgoing.flags = context.logicalFlags;
    return std::nullopt;
}

}  // namespace orvel::rules
