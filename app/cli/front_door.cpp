#include "app/cli/front_door.hpp"

#include "app/cli/prefs_options.hpp"
#include "app/cli/session_command.hpp"
#include "app/cli/wrong_use.hpp"
#include "app/replay/replay_runner.hpp"
#include "engine/rule_table.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace orvel {

namespace {

bool isSessionCommand(const std::string& name) {
    return std::ranges::any_of(
        kSessionCommands, [&name](const SessionCommand& command) { return name == command.name; });
}

void describeSessionCommands(CLI::App& app) {
    for (const SessionCommand& command : kSessionCommands) {
        app.add_subcommand(command.name, command.description);
    }
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
        return refuseWrongUse(app, error, {argv + 1, argv + argc});
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
