#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// The keys of the F-row act as media keys while they are in media mode.
RuleOutcome functionRow(RuleContext& context);

}  // namespace orvel::rules
