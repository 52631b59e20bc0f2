#include "tools/rig/client_programs.hpp"

namespace orvel::rig {

std::string clientProgram(const std::string& name) { return ORVEL_RIG_CLIENTS "/" + name; }

}  // namespace orvel::rig
