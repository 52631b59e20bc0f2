#pragma once

#include "platform/base/result.hpp"

#include <cstddef>
#include <span>
#include <string>

namespace orvel::macos {

/// Puts a new file in the place of `path`, or leaves what is there: it is whole at every moment,
/// also when the power fails. Only the user may read it.
Result<> replaceFile(const std::string& path, std::span<const std::byte> bytes);

}  // namespace orvel::macos
