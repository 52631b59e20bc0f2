#pragma once

#include "platform/base/json.hpp"
#include "platform/macos/mac_cf_ref.hpp"

#include <cstddef>
#include <span>

namespace orvel::macos {

/// The root object of a property list, binary or XML; never null.
Result<CfRef<CFTypeRef>> parsePropertyList(std::span<const std::byte> bytes);

/// A property list as JSON values; data becomes base64 text and dates the text
/// that the system gives them.
Result<Json> jsonOfPropertyList(std::span<const std::byte> bytes);

}  // namespace orvel::macos
