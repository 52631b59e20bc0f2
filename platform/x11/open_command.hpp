#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <vector>

namespace orvel::x11 {

/// What a call of `/usr/bin/open` asks for.
struct OpenCommand {
    /// A name as people say it, or an identifier; empty: the default application.
    std::string applicationName;
    std::string applicationId;
    bool isReveal = false;
    /// Paths and addresses, in order.
    std::vector<std::string> items;
    bool operator==(const OpenCommand&) const = default;
};

/// Reads the arguments of `open`: -a NAME, -b IDENTIFIER, -R, paths and addresses.
Result<OpenCommand> parseOpenCommand(const std::vector<std::string>& arguments);

/// The text of `osascript`'s arguments: the lines of all -e options.
Result<std::string> parseOsascriptCommand(const std::vector<std::string>& arguments);

}  // namespace orvel::x11
