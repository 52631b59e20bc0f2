#include "app/cli/session_command.hpp"

#include "app/cli/wrong_use.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace orvel {

namespace {

using session::SessionOptions;

void addRunOptions(CLI::App& command, SessionOptions& options, const std::string& traceFile) {
    command.add_flag("--trace", options.isTracing,
                     "Keep a debug trace of rewritten keys in " + traceFile);
    command.add_flag("--dry-run-power", options.isDryRunPower,
                     "Report power actions without carrying them out");
}

bool isTraceWanted() {
    const char* wanted = std::getenv("ORVEL_TRACE");
    return wanted != nullptr && std::string_view(wanted) == "1";
}

CLI::App* add(CLI::App& app, const SessionCommand& command) {
    return app.add_subcommand(command.name, command.description);
}

std::vector<const char*> pointers(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    return argv;
}

int refuseSilentRecording() {
    std::fputs(
        "orvel: record writes everything that is typed, passwords excepted, into the "
        "file; agree with --yes-record-keys\n",
        stderr);
    return session::kWrongUse;
}

}  // namespace

int runSessionCommand(const std::vector<std::string>& arguments, SessionProgram& program) {
    CLI::App app{"Orvel in a desktop session"};
    app.name("orvel");
    app.require_subcommand(1);
    SessionOptions options;
    options.isTracing = isTraceWanted();
    addRunOptions(*add(app, kRunCommand), options, program.traceFile());
    auto* record = add(app, kRecordCommand);
    addRunOptions(*record, options, program.traceFile());
    bool mayRecordKeys = false;
    record->add_option("FILE", options.recordPath, "Where to write the steps")->required();
    record->add_flag("--yes-record-keys", mayRecordKeys, "Agree that what is typed is written");
    auto* doctor = add(app, kDoctorCommand);
    auto* panel = add(app, kPanelCommand);
    try {
        const auto argv = pointers(arguments);
        app.parse(static_cast<int>(argv.size()), argv.data());
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);  // Help.
        return refuseWrongUse(app, error, {arguments.begin() + 1, arguments.end()});
    }
    if (panel->parsed()) return program.openPanel();
    if (record->parsed() && !mayRecordKeys) return refuseSilentRecording();
    if (doctor->parsed()) return program.doctor();
    return program.run(options);
}

}  // namespace orvel
