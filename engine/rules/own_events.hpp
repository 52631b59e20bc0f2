#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Lets events that carry our own marker through, so that none is processed twice.
RuleOutcome passOwnEvents(RuleContext& context);

}  // namespace orvel::rules
