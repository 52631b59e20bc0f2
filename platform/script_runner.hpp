#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <string_view>

namespace orvel {

/// Compiles and runs AppleScript texts in this process. Blocks until the script ends; any thread.
class ScriptRunner {
public:
    virtual ~ScriptRunner() = default;

    /// The script's result as text, or the description of its error.
    virtual Result<std::string> run(std::string_view source) = 0;
};

}  // namespace orvel
