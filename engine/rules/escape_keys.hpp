#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Escape closes the start menu; Option+Escape switches the F-row between its two kinds.
RuleOutcome escapeKeys(RuleContext& context);

}  // namespace orvel::rules
