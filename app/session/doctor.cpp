#include "app/session/doctor.hpp"

#include "app/cli/doctor_report.hpp"
#include "app/session/session_environment.hpp"
#include "platform/x11/fn_key.hpp"
#include "platform/x11/input_checks.hpp"
#include "platform/x11/x11_preference_store.hpp"
#include "platform/x11/x11_run_loop.hpp"
#include "platform/x11/x11_services.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace orvel::session {

namespace {

using x11::ServiceCheck;

ServiceCheck essential(std::string name, bool isOk, std::string finding, std::string remedy) {
    return {.name = std::move(name),
            .isOk = isOk,
            .isEssential = true,
            .finding = std::move(finding),
            .remedy = std::move(remedy)};
}

ServiceCheck checkSession(const SessionEnvironment& environment) {
    if (!environment.isWayland()) return essential("session", true, "not Wayland", {});
    return essential("session", false, "Wayland lets no program see or change the keys of others",
                     "log in to an X11 (Xorg) session");
}

ServiceCheck checkSettings() {
    std::string problem;
    x11::X11PreferenceStore store(
        x11::preferencesPath(), [&problem](std::string_view line) { problem = std::string(line); });
    store.refresh();
    const bool isOk = problem.empty();
    return {.name = "settings",
            .isOk = isOk,
            .isEssential = false,
            .finding = isOk ? store.path() : problem,
            .remedy = isOk ? "" : "repair or remove the file; until then the defaults apply"};
}

ServiceCheck checkRuntimeFolder() {
    const std::string folder = x11::runtimeFolder();
    return essential("runtime folder", !folder.empty(),
                     folder.empty() ? "there is no safe place for the session's lock" : folder,
                     folder.empty() ? "set XDG_RUNTIME_DIR to a folder of your own" : "");
}

std::vector<ServiceCheck> checkTable(const x11::PlatformTable& table, const x11::FnKey& fn,
                                     const std::vector<std::string>& others) {
    std::vector<ServiceCheck> checks;
    for (const auto& errors : {table.errors, fn.errors, others}) {
        for (const std::string& error : errors) {
            checks.push_back({.name = "platform table",
                              .isOk = false,
                              .isEssential = false,
                              .finding = error,
                              .remedy = "correct this line"});
        }
    }
    return checks;
}

void append(std::vector<ServiceCheck>& all, std::vector<ServiceCheck> more) {
    for (ServiceCheck& check : more) all.push_back(std::move(check));
}

/// What needs a connection to the server; an essential failure when there is none.
std::vector<ServiceCheck> checkServer(qt::QtRunLoop& runLoop) {
    auto session = x11::X11Session::open();
    if (!session) return {essential("X server", false, session.error(), "start in an X11 session")};
    std::vector<ServiceCheck> checks{
        essential("X server", true, "has the input, keyboard and test extensions", {})};
    const x11::PlatformTable table = x11::loadPlatformTable();
    const x11::FnKey fn = x11::readFnKey(table);
    append(checks, x11::checkInput(*session.value(), fn.name));
    x11::ServiceOptions options;
    options.table = table;
    auto services = x11::X11Services::open(runLoop, options);
    if (!services) {
        checks.push_back(essential("services", false, services.error(), {}));
        return checks;
    }
    append(checks, services.value()->checks());
    append(checks, checkTable({}, fn, services.value()->tableErrors()));
    return checks;
}

}  // namespace

int runDoctor(int& argc, char** argv) {
    x11::X11RunLoop runLoop(argc, argv);
    std::vector<ServiceCheck> checks{checkSession(readEnvironment()), checkRuntimeFolder(),
                                     checkSettings()};
    append(checks, checkServer(runLoop.get()));
    return reportChecks(checks, std::cout);
}

}  // namespace orvel::session
