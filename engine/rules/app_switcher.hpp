#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Alt+Tab plays the application switcher, Win+Tab shows all windows.
RuleOutcome appSwitcher(RuleContext& context);

}  // namespace orvel::rules
