#pragma once

#include "platform/x11/platform_table.hpp"

#include <string>
#include <vector>

namespace orvel::x11 {

/// The key that the user names as Fn. An X server knows no such key.
struct FnKey {
    /// A place or a symbol of the keymap; empty for none.
    std::string name;
    /// `FILE:LINE: what is wrong`.
    std::vector<std::string> errors;
};

/// Reads the section `keys` of the user's table.
[[nodiscard]] FnKey readFnKey(const PlatformTable& table);

}  // namespace orvel::x11
