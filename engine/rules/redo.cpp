#include "engine/rules/redo.hpp"

namespace orvel::rules {

RuleOutcome redo(RuleContext& context) {
    const EventFlags flags = context.logicalFlags;
    const bool isRedo = context.incoming.keyCode == key::y && holds(flags, flag::command) &&
                        !holds(flags, flag::shift);
    if (!isRedo) return std::nullopt;
    return context.rewritten(key::z, flag::command | flag::shift);
}

}  // namespace orvel::rules
