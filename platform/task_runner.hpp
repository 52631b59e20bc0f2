#pragma once

#include "platform/base/result.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// Child processes. Arguments are passed as they are, never through a shell. Any thread.
class TaskRunner {
public:
    virtual ~TaskRunner() = default;

    /// Waits for the end; standard output and standard error as one text. Fails when the program
    /// cannot be launched. Not for the main thread.
    virtual Result<std::string> run(std::string_view path,
                                    const std::vector<std::string>& arguments) = 0;
    /// Launches and does not wait.
    virtual Result<> launch(std::string_view path, const std::vector<std::string>& arguments) = 0;
};

}  // namespace orvel
