#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// A notched wheel scrolls the other way; touchpads keep their direction.
RuleOutcome reverseWheel(RuleContext& context);

}  // namespace orvel::rules
