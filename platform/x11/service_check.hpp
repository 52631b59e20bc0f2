#pragma once

#include "platform/service_check.hpp"

namespace orvel::x11 {

using orvel::ServiceCheck;

}  // namespace orvel::x11
