#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Command+Y is redo, which the system calls Command+Shift+Z.
RuleOutcome redo(RuleContext& context);

}  // namespace orvel::rules
