#include "app/cli/session_options.hpp"
#include "app/session/session_lock.hpp"
#include "platform/qt/controls/appearance.hpp"
#include "platform/x11/force_quit/force_quit_model.hpp"
#include "platform/x11/force_quit/force_quit_window.hpp"
#include "platform/x11/x11_application.hpp"
#include "platform/x11/x11_run_loop.hpp"
#include "platform/x11/x11_services.hpp"
#include "platform/x11/x11_session.hpp"
#include "platform/x11/xdg_folders.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

using orvel::session::kFailed;
using orvel::session::kServerGone;

constexpr const char* kName = "orvel-force-quit";

int fail(const std::string& problem) {
    std::fprintf(stderr, "%s: %s\n", kName, problem.c_str());
    return kFailed;
}

/// Brings the window of the process that runs already to the front.
int showRunning(orvel::x11::X11Services& services, int process) {
    services.workspace().activate(process, orvel::kActivateIgnoringOtherApps);
    return 0;
}

int run(int& argc, char** argv) {
    const char* display = std::getenv("DISPLAY");
    if (display == nullptr || *display == '\0') return fail("no X display: DISPLAY is not set");
    // Qt ends the process by itself when there is no display.
    if (const auto server = orvel::x11::X11Session::open(); !server) return fail(server.error());
    orvel::session::LockRefusal refusal;
    const auto lock = orvel::session::SessionLock::take(
        orvel::x11::runtimeFolder(), std::string("-force-quit") + display, refusal);
    const orvel::x11::X11Application application(argc, argv, kServerGone);
    orvel::x11::X11RunLoop runLoop(argc, argv);
    orvel::x11::ServiceOptions options;
    options.table = orvel::x11::loadPlatformTable();
    auto services = orvel::x11::X11Services::open(runLoop.get(), options);
    if (!services) return fail(services.error());
    // Where no lock can be had at all, a second window is better than none.
    if (!lock && refusal.holder > 0) return showRunning(*services.value(), refusal.holder);
    services.value()->onLost([&runLoop] { runLoop.get().quit(kServerGone); });
    auto& workspace = services.value()->workspace();
    orvel::x11::ForceQuitModel model(workspace, ::getpid(), [&workspace](orvel::ProcessId pid) {
        workspace.forceTerminate(pid);
    });
    const auto listChange = workspace.onRunningChange([&model] { model.refresh(); });
    orvel::qt::Appearance appearance{nullptr};
    orvel::x11::ForceQuitWindow window(workspace, model, [&runLoop] { runLoop.get().quit(); });
    if (!window.show()) return fail("its window cannot be made");
    return runLoop.get().run();
}

}  // namespace

int main(int argc, char** argv) { return run(argc, argv); }
