#pragma once

#include "app/cli/session_options.hpp"

namespace orvel::session {

/// Runs the program in this login session. The system ends the process from inside; comes back
/// only when the run loop was left, with the exit status.
int runResident(const SessionOptions& options);

}  // namespace orvel::session
