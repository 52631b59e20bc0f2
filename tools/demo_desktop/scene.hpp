#pragma once

#include "tools/demo_desktop/demo_desktop.hpp"

#include <iosfwd>
#include <string>

namespace orvel::demo {

/// Runs the program in the desktop and uses the desktop as a person would, by keyboards and mouse
/// only. Tells each step and what the applications made of it; false when one went wrong.
bool playScene(DemoDesktop& desktop, const std::string& program, std::ostream& out);

}  // namespace orvel::demo
