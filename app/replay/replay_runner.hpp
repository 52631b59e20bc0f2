#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace orvel {

/// Runs the whole system on a desktop in memory by the steps of `in` and writes what it does to
/// `out`. `fileName` names the input in error lines. Returns the exit status: 0 when every step
/// ran, 2 when a step is malformed, 3 when it asks for something that this build does not have.
int runReplay(const std::string& fileName, std::istream& in, std::ostream& out, std::ostream& err);

/// The same with the file of that name, `-` being `standardInput`.
int runReplayFile(const std::string& fileName, std::istream& standardInput, std::ostream& out,
                  std::ostream& err);

}  // namespace orvel
