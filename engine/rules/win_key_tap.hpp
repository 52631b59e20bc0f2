#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// A lone press of the Win key opens the start menu; its release completes Win+D.
RuleOutcome winKeyTap(RuleContext& context);

}  // namespace orvel::rules
