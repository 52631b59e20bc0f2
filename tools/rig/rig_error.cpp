#include "tools/rig/rig_error.hpp"

#include <cerrno>
#include <cstring>

namespace orvel::rig {

void failWithErrno(const std::string& what) { throw RigError(what + ": " + std::strerror(errno)); }

}  // namespace orvel::rig
