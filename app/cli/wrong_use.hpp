#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace orvel {

/// Tells in one line what is wrong with a command line, and in another where help is; gives the
/// exit status. `words` are those behind the program's name.
int refuseWrongUse(const CLI::App& app, const CLI::ParseError& error,
                   const std::vector<std::string>& words);

}  // namespace orvel
