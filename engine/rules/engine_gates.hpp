#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Passes everything while the master switch is off.
RuleOutcome requireWindowsMode(RuleContext& context);
/// Notes for the lone-modifier rules that another key went down.
RuleOutcome trackOtherKeys(RuleContext& context);
/// Passes everything while the engine is paused.
RuleOutcome requireRunning(RuleContext& context);

}  // namespace orvel::rules
