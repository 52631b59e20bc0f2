#pragma once

#include "platform/x11/accessible_focus.hpp"

#include <string>

namespace orvel::x11 {

/// Enters the path into the field of that window that shows the address of a folder, as a person
/// would, but without the keyboard: whatever has the keyboard keeps it. False, and nothing is
/// entered, for a window that shows no such field on the accessibility bus. Waits for the
/// application until the deadline.
[[nodiscard]] bool enterAddress(AccessibleFocus& focus, int process, const std::string& title,
                                const std::string& path, Deadline deadline);

}  // namespace orvel::x11
