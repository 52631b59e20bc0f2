#pragma once

#include "platform/macos/mac_cf_ref.hpp"
#include "platform/panels.hpp"

#include <optional>

namespace orvel::macos {

/// Panels are told apart by the identifier of their window (an NSWindow), which this sets.
void nameWindow(CFTypeRef window, PanelId panel);
/// Absent for null and for windows that are no panel.
std::optional<PanelId> panelOfWindow(CFTypeRef window);
/// The window of a panel that exists; null when there is none. Not owned.
CFTypeRef windowOfPanel(PanelId panel);

}  // namespace orvel::macos
