#pragma once

#include "platform/service_check.hpp"

#include <iosfwd>
#include <span>

namespace orvel {

/// Prints one line for each finding, with its remedy. Returns the exit status: 1 when something
/// essential is missing.
int reportChecks(std::span<const ServiceCheck> checks, std::ostream& out);

}  // namespace orvel
