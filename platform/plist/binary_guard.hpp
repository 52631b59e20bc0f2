#pragma once

#include "platform/base/result.hpp"

#include <string_view>

namespace orvel::plist {

/// Refuses a binary property list that would exhaust memory or stack when it is unfolded: its
/// objects may refer to each other, so a few bytes can stand for any number of values.
Result<> checkBinaryPropertyList(std::string_view bytes);

}  // namespace orvel::plist
