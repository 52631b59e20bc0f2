#include "app/session/doctor.hpp"
#include "app/session/resident.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using orvel::session::SessionOptions;

void addRunOptions(CLI::App& command, SessionOptions& options) {
    command.add_flag("--trace", options.isTracing,
                     "Keep a debug trace of rewritten keys in $XDG_STATE_HOME/orvel/trace.log");
    command.add_flag("--dry-run-power", options.isDryRunPower,
                     "Report power actions without carrying them out");
}

bool isTraceWanted() {
    const char* wanted = std::getenv("ORVEL_TRACE");
    return wanted != nullptr && std::string_view(wanted) == "1";
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Orvel in a desktop session"};
    app.name("orvel");
    app.require_subcommand(1);
    SessionOptions options;
    options.isTracing = isTraceWanted();
    auto* run = app.add_subcommand("run", "Start in this desktop session and stay");
    addRunOptions(*run, options);
    auto* record =
        app.add_subcommand("record", "Write what is typed and what becomes of it as replay steps");
    addRunOptions(*record, options);
    bool mayRecordKeys = false;
    record->add_option("FILE", options.recordPath, "Where to write the steps")->required();
    record->add_flag("--yes-record-keys", mayRecordKeys, "Agree that what is typed is written");
    auto* doctor =
        app.add_subcommand("doctor", "Tell what this desktop can and cannot do for Orvel");
    auto* panel = app.add_subcommand("panel", "Open the settings panel of the running program");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : orvel::session::kWrongUse;
    }
    if (panel->parsed()) return orvel::session::openPanel();
    if (record->parsed() && !mayRecordKeys) {
        std::fputs(
            "orvel: record writes everything that is typed, passwords excepted, into the "
            "file; agree with --yes-record-keys\n",
            stderr);
        return orvel::session::kWrongUse;
    }
    if (doctor->parsed()) return orvel::session::runDoctor(argc, argv);
    return orvel::session::runResident(argc, argv, options);
}
