#pragma once

#include "platform/service_check.hpp"

#include <vector>

namespace orvel::macos {

/// What this login session grants and offers, as it is now. Prompts nobody. Main thread.
std::vector<ServiceCheck> checkMac();

}  // namespace orvel::macos
