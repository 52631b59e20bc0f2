#include "engine/rules/browser_habits.hpp"

namespace orvel::rules {

RuleOutcome browserHabits(RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    const EventFlags flags = context.logicalFlags;
    const bool hasCommandOrControl = holdsAny(flags, flag::command | flag::control);
    if (code == key::f4 && holds(flags, flag::option) && !hasCommandOrControl) {
        return context.rewritten(key::w, flag::command);
    }
    if (code == key::f5 && !hasCommandOrControl && !holdsAny(flags, flag::option | flag::shift)) {
        return context.rewritten(key::r, flag::command);
    }
    return std::nullopt;
}

}  // namespace orvel::rules
