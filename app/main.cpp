#include "app/cli/session_program.hpp"
#include "app/replay/replay_runner.hpp"
#include "engine/rule_table.hpp"

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>
#include <utility>

namespace {

constexpr int kWrongUse = 2;

/// Commands that need a desktop; the session program knows their options.
struct SessionCommand {
    const char* name;
    const char* description;
};
constexpr SessionCommand kSessionCommands[] = {
    {"run", "Start in this desktop session and stay"},
    {"panel", "Open the settings panel of the running program"},
    {"record", "Write what is typed and what becomes of it as replay steps"},
    {"doctor", "Tell what this desktop can and cannot do for Orvel"},
};

bool isSessionCommand(const std::string& name) {
    for (const SessionCommand& command : kSessionCommands) {
        if (name == command.name) return true;
    }
    return false;
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

    try {
        app.parse(argc, argv);
    } catch (const CLI::RequiredError& error) {
        if (argc > 1 && argv[1][0] != '-' && app.get_subcommands().empty()) {
            std::cerr << "orvel: unknown command '" << argv[1]
                      << "'\nRun with --help for more information.\n";
            return kWrongUse;
        }
        app.exit(error);
        return kWrongUse;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUse;
    }
    if (replay->parsed()) return orvel::runReplayFile(file, std::cin, std::cout, std::cerr);
    if (rules->parsed()) std::cout << orvel::describeRules();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    if (argc > 1 && isSessionCommand(argv[1])) {
        return orvel::becomeSessionProgram({argv, argv + argc});
    }
    return parseAndRun(argc, argv);
}
