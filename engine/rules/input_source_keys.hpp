#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Caps Lock types English capitals while another input source is active.
RuleOutcome capsLockInputSource(RuleContext& context);
/// A lone, short press of Shift switches the input source; Shift itself still arrives.
RuleOutcome singleShiftInputSource(RuleContext& context);

}  // namespace orvel::rules
