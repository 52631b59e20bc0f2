#pragma once

#include "app/session/session_options.hpp"

namespace orvel::session {

/// Runs the program in this desktop session until it is asked to end; returns the exit status.
int runResident(int& argc, char** argv, const SessionOptions& options);

}  // namespace orvel::session
