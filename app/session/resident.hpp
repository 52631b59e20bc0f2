#pragma once

#include "app/cli/session_options.hpp"

namespace orvel::session {

/// Runs the program in this desktop session until it is asked to end; returns the exit status.
int runResident(int& argc, char** argv, const SessionOptions& options);

/// Has the resident of this session open its settings panel; returns the exit status.
int openPanel();

}  // namespace orvel::session
