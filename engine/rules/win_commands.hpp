#pragma once

#include "engine/rule.hpp"

namespace orvel::rules {

/// Win with a letter, and Ctrl+Shift+Escape.
RuleOutcome winCommands(RuleContext& context);
/// Win with a digit starts the application at that place of the taskbar, or of the Dock.
RuleOutcome winDigits(RuleContext& context);

}  // namespace orvel::rules
