#pragma once

#include <string>

namespace orvel::session {

/// What the user asked of a resident process.
struct SessionOptions {
    bool isTracing = false;
    /// Power actions are reported and not carried out.
    bool isDryRunPower = false;
    /// Where to record the session; empty for not at all.
    std::string recordPath;
};

/// Exit statuses beside 0.
enum ExitCode : int {
    kFailed = 1,
    kWrongUse = 2,
    kServerGone = 4,
};

}  // namespace orvel::session
