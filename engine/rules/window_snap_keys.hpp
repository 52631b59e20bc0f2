#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Win with an arrow moves the focused window.
RuleOutcome windowSnapKeys(RuleContext& context);

}  // namespace orvel::rules
