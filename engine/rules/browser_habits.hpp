#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Alt+F4 closes the window, F5 reloads.
RuleOutcome browserHabits(RuleContext& context);

}  // namespace orvel::rules
