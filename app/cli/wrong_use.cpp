#include "app/cli/wrong_use.hpp"

#include "app/cli/session_options.hpp"

#include <iostream>
#include <string_view>

namespace orvel {

namespace {

/// The words of a command that was understood, as "orvel prefs set".
std::string commandLine(const CLI::App& app) {
    const auto parsed = app.get_subcommands();
    const std::string& name = app.get_name();
    return parsed.empty() ? name : name + ' ' + commandLine(*parsed.front());
}

std::size_t depthOf(const CLI::App& app) {
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? 0 : 1 + depthOf(*parsed.front());
}

}  // namespace

int refuseWrongUse(const CLI::App& app, const CLI::ParseError& error,
                   const std::vector<std::string>& words) {
    const std::string understood = commandLine(app);
    const std::size_t next = depthOf(app);
    const bool hasNext = next < words.size();
    const bool wantsCommand =
        std::string_view(error.what()).find("subcommand") != std::string_view::npos;
    std::cerr << understood << ": ";
    if (wantsCommand && hasNext) {
        const bool isOption = words[next].starts_with('-');
        std::cerr << "unknown " << (isOption ? "option '" : "command '") << words[next] << "'";
    } else if (wantsCommand) {
        std::cerr << "a command is required";
    } else {
        std::cerr << error.what();
    }
    std::cerr << "\nRun '" << understood << " --help' for more information.\n";
    return session::kWrongUse;
}

}  // namespace orvel
