#pragma once

#include <cstddef>
#include <string_view>

namespace orvel {

/// The length of the well-formed UTF-8 sequence at the start of `text`, 0 when there is none: what
/// is longer than need be, a surrogate, or beyond the last code point is not well-formed.
[[nodiscard]] std::size_t utf8Length(std::string_view text);
/// Whether the text is whole sequences of UTF-8 from its first byte to its last.
[[nodiscard]] bool isUtf8(std::string_view text);

}  // namespace orvel
