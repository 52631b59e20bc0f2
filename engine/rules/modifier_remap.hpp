#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// A modifier key acts as the one it is mapped to.
RuleOutcome remapModifierKey(RuleContext& context);
/// A key arrives with the modifiers that the person means.
RuleOutcome remapKeyModifiers(RuleContext& context);

}  // namespace orvel::rules
