#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Up, Down, Return, keypad Enter and Escape steer the clipboard panel while it shows, whatever
/// the master switch says. A press taken here keeps its release here: the panel may have closed
/// in between.
RuleOutcome clipboardPanelKeys(RuleContext& context);

}  // namespace orvel::rules
