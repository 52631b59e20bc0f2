#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// Standard alphabet with padding, without line breaks.
std::string base64Encode(std::span<const std::byte> bytes);
/// Absent unless `text` is exactly what `base64Encode` writes for some bytes.
std::optional<std::vector<std::byte>> base64Decode(std::string_view text);

}  // namespace orvel
