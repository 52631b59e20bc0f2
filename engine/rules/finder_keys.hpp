#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// The keys of a Windows file manager: Return opens, F2 renames, Delete moves to the trash, and a
/// cut file moves with the next paste.
RuleOutcome finderKeys(RuleContext& context);

}  // namespace orvel::rules
