#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Home, End, Page Up and Page Down, also as Fn with an arrow, move as on Windows.
RuleOutcome fnArrows(RuleContext& context);

}  // namespace orvel::rules
