#pragma once

#include <string>

namespace orvel::rig {

/// The path of one of the rig's own client programs, as built.
std::string clientProgram(const std::string& name);

}  // namespace orvel::rig
