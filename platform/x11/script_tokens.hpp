#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// One word, number, text or sign of a script.
struct ScriptToken {
    enum class Kind { word, number, text, sign, lineEnd };
    Kind kind = Kind::word;
    std::string value;  ///< words in lower case; texts without quotes, escapes resolved
    /// The characters as they stand in the script.
    std::string_view source;
};

/// Lines are kept apart by one token; empty lines, blanks and the end of the last line vanish.
Result<std::vector<ScriptToken>> scriptTokens(std::string_view source);

}  // namespace orvel::x11
