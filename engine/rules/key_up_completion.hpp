#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// A held key keeps doing what its press did; no rule starts on a repeat.
RuleOutcome heldKeys(RuleContext& context);
/// A fresh press of a key forgets what is left of an older one whose release was lost.
RuleOutcome forgetLostRelease(RuleContext& context);
/// The release of a swallowed or rewritten press goes the way of its press.
RuleOutcome keyUpCompletion(RuleContext& context);

}  // namespace orvel::rules
