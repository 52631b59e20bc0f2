#pragma once

#include "platform/base/result.hpp"

#include <string>

namespace orvel {

/// Makes an empty file for the user's eyes only, since it will hold what is typed. Never follows a
/// link.
Result<> makeRecordFile(const std::string& path);

}  // namespace orvel
