#pragma once

namespace orvel::session {

/// Prints what this desktop can and cannot do for us, one line each with the remedy. Returns the
/// exit status: 1 when something essential is missing.
int runDoctor(int& argc, char** argv);

}  // namespace orvel::session
