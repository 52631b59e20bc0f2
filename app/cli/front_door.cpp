#include "app/cli/front_door.hpp"

#include "app/cli/prefs_options.hpp"
#include "app/cli/session_command.hpp"
#include "app/replay/replay_runner.hpp"
#include "engine/rule_table.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

namespace {

constexpr int kWrongUse = 2;

bool isSessionCommand(const std::string& name) {
    return std::ranges::any_of(
        kSessionCommands, [&name](const SessionCommand& command) { return name == command.name; });
}

void describeSessionCommands(CLI::App& app) {
    for (const SessionCommand& command : kSessionCommands) {
        app.add_subcommand(command.name, command.description);
    }
}

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

/// One line about what is wrong, and one about where help is.
int refuse(const CLI::App& app, const CLI::ParseError& error,
           const std::vector<std::string>& arguments) {
    const std::string understood = commandLine(app);
    const std::size_t next = depthOf(app);
    const bool hasNext = next < arguments.size();
    const bool wantsCommand =
        std::string_view(error.what()).find("subcommand") != std::string_view::npos;
    std::cerr << understood << ": ";
    if (wantsCommand && hasNext) {
        const bool isOption = arguments[next].starts_with('-');
        std::cerr << "unknown " << (isOption ? "option '" : "command '") << arguments[next] << "'";
    } else if (wantsCommand) {
        std::cerr << "a command is required";
    } else {
        std::cerr << error.what();
    }
    std::cerr << "\nRun '" << understood << " --help' for more information.\n";
    return kWrongUse;
}

int parseAndRun(int argc, char** argv) {
    CLI::App app{"Keyboard, mouse and desktop habits of Windows for the Mac"};
    app.name("orvel");
    app.set_version_flag("--version", "orvel " ORVEL_VERSION);
    app.require_subcommand(1);
    describeSessionCommands(app);

    auto* replay = app.add_subcommand("replay", "Run recorded input on a desktop in memory");
    std::string file;
    replay->add_option("FILE", file, "The steps as JSON Lines; - for standard input")->required();
    auto* rules =
        app.add_subcommand("rules", "Print the table of rules in the order of their turn");

    PrefsOptions prefs(app);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);  // Help and version.
        return refuse(app, error, {argv + 1, argv + argc});
    }
    if (prefs.wereGiven()) return prefs.run(std::cin, std::cout, std::cerr);
    if (replay->parsed()) return runReplayFile(file, std::cin, std::cout, std::cerr);
    if (rules->parsed()) std::cout << describeRules();
    return 0;
}

}  // namespace

int runFrontDoor(int argc, char** argv, const SessionStart& startSession) {
    std::ios::sync_with_stdio(false);
    if (argc < 2) return startSession({argv[0], "run"});
    if (isSessionCommand(argv[1])) return startSession({argv, argv + argc});
    return parseAndRun(argc, argv);
}

}  // namespace orvel
