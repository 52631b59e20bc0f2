#pragma once

#include "platform/base/json.hpp"

#include <cstddef>
#include <span>

namespace orvel::macos {

/// A property list, binary or XML, as JSON values; data becomes base64 text and dates the text
/// that the system gives them.
Result<Json> jsonOfPropertyList(std::span<const std::byte> bytes);

}  // namespace orvel::macos
