#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// A lone press of the logical Option key opens the search of the Help menu; its release ends
/// the application switcher that Alt+Tab began.
RuleOutcome optionMenuSearch(RuleContext& context);

}  // namespace orvel::rules
