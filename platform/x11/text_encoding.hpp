#pragma once

#include <string>
#include <string_view>

namespace orvel::x11 {

std::string utf8FromLatin1(std::string_view latin1);
/// What Latin-1 cannot say becomes a question mark.
std::string latin1FromUtf8(std::string_view utf8);

}  // namespace orvel::x11
