#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// A middle click in the file manager opens the Finder menu.
RuleOutcome middleClickInFinder(RuleContext& context);
/// The side buttons go back and forward.
RuleOutcome sideButtons(RuleContext& context);

}  // namespace orvel::rules
