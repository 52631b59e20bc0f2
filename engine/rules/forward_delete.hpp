#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Backspace with the chosen modifier, or the key that is given up, is the forward delete.
RuleOutcome forwardDelete(RuleContext& context);
/// The Fn key as the key that is given up: it arrives as modifier changes only.
RuleOutcome fnSacrifice(RuleContext& context);

}  // namespace orvel::rules
