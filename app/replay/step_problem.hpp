#pragma once

#include <string>
#include <string_view>

namespace orvel::replay {

/// The replay cannot be run as it is written.
inline constexpr int kMalformedInput = 2;
/// The replay asks for a part of the system that this build does not have.
inline constexpr int kNotAvailable = 3;

/// Why a step did not run, and the exit status that this gives.
struct StepProblem {
    int exitStatus = kMalformedInput;
    std::string text;
};

inline StepProblem notAvailable(std::string_view what) {
    return {kNotAvailable, std::string(what) + ": not available in this build"};
}

}  // namespace orvel::replay
