#include "platform/x11/x11_window_images.hpp"
#include "tests/platform/contract/accessibility_windows_contract.hpp"
#include "tests/platform/contract/screens_contract.hpp"
#include "tests/platform/contract/task_runner_contract.hpp"
#include "tests/platform/contract/window_images_contract.hpp"
#include "tests/platform/contract/window_list_contract.hpp"
#include "tests/platform/contract/workspace_contract.hpp"
#include "tests/session/own_home.hpp"
#include "tests/session/service_session.hpp"
#include "tools/rig/windows.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

// The services of an X11 session are held to what every desktop does. All harnesses share one
// embedded desktop; each opens the services anew and closes what it opened.

namespace orvel::contract {
namespace {

using test::OpenServices;

/// Installed before anything reads what is installed.
void installExample() {
    const auto folder = test::OwnHome::get().data() / "applications";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "contract-example.desktop")
        << "[Desktop Entry]\nType=Application\nName=Contract Example\nExec=/bin/true\n";
}

rig::EmbeddedDesktop& sharedDesktop() {
    static std::once_flag isInstalled;
    std::call_once(isInstalled, installExample);
    static rig::EmbeddedDesktop desktop;
    return desktop;
}

class X11Harness {
public:
    X11Harness() : services_(sharedDesktop()) {
        EXPECT_TRUE(test::eventually(
            services_, [this] { return front(); }, testing::Eq(std::nullopt)));
    }
    ~X11Harness() {
        apps_.clear();
        EXPECT_TRUE(test::eventually([] { return rig::managedWindows(sharedDesktop().x()).size(); },
                                     testing::Eq(0U)));
    }

    void settle() { services_.settle(); }

    AccessibilityWindows& windows() { return services_->accessibilityWindows(); }
    WindowList& list() { return services_->windowList(); }
    WindowImages& images() { return images_; }
    Screens& screens() { return services_->screens(); }
    TaskRunner& tasks() { return services_->taskRunner(); }
    Workspace& workspace() { return services_->workspace(); }

    ProcessId open(const std::string& title, AxRect frame) {
        auto& app = apps_.emplace_back(sharedDesktop().environment(), sharedDesktop().x());
        app.open({.title = title, .className = title});
        const auto pid = app.process().pid();
        const auto isListed = [&] { return !windowsOf(pid).empty(); };
        EXPECT_TRUE(test::eventually(services_, isListed, testing::Eq(true)));
        for (const auto& window : windowsOf(pid)) {
            windows().setPosition(window, frame.origin());
            windows().setSize(window, frame.size());
        }
        rig::waitForWindowManager(sharedDesktop().x());
        focus(pid);
        return pid;
    }
    void focus(ProcessId pid) {
        workspace().activate(pid, kActivateIgnoringOtherApps);
        EXPECT_TRUE(test::eventually(
            services_, [this] { return front(); }, testing::Optional(pid)));
    }
    void minimise(ProcessId pid) {
        for (const auto& window : windowsOf(pid)) EXPECT_TRUE(windows().setMinimized(window, true));
    }
    void close(ProcessId pid) {
        apps_.remove_if([pid](rig::PlainWindows& app) { return app.process().pid() == pid; });
        const auto isGone = [&] { return windowsOf(pid).empty(); };
        EXPECT_TRUE(test::eventually(services_, isGone, testing::Eq(true)));
    }

    static InstalledExample installed() {
        const std::string id = "contract-example.desktop";
        const auto folder = test::OwnHome::get().data() / "applications";
        return {id, (folder / id).string(), "Contract Example"};
    }
    ProcessId startApplication() {
        return open("app" + std::to_string(apps_.size()), {100, 100, 200, 150});
    }
    /// As a click on its window does.
    void bringToFront(ProcessId pid) {
        rig::focusWindow(sharedDesktop().x(),
                         x11::X11AccessibilityWindows::windowId(windowsOf(pid).front()));
        EXPECT_TRUE(test::eventually(
            services_, [this] { return front(); }, testing::Optional(pid)));
    }
    void end(ProcessId pid) {
        close(pid);
        const auto running = [this] { return workspace().runningApplications(); };
        const auto isIt = testing::Field(&RunningApplication::pid, pid);
        EXPECT_TRUE(test::eventually(services_, running, testing::Not(testing::Contains(isIt))));
    }
    bool wasActivated(ProcessId pid) {
        const auto window = x11::X11AccessibilityWindows::windowId(windowsOf(pid).front());
        return bool(test::eventually([] { return rig::activeWindow(sharedDesktop().x()); },
                                     testing::Optional(rig::WindowId{window})));
    }
    std::vector<ProcessId> askedToEnd() {
        const auto asked = [this] {
            std::vector<ProcessId> found;
            for (auto& app : apps_) {
                const bool isAsked =
                    app.process().out().text().find("closed ") != std::string::npos;
                if (isAsked) found.push_back(app.process().pid());
            }
            return found;
        };
        EXPECT_TRUE(test::eventually(services_, asked, testing::Not(testing::IsEmpty())));
        return asked();
    }

    Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments) {
        return tasks().run(path, arguments);
    }
    void hasProgram(const std::string& path, const std::vector<std::string>&, const std::string&) {
        EXPECT_EQ(::access(path.c_str(), X_OK), 0) << path;
    }
    void hasNoProgram(const std::string& path) { EXPECT_NE(::access(path.c_str(), F_OK), 0); }

private:
    std::optional<ProcessId> front() {
        const auto application = workspace().frontmostApplication();
        return application ? std::optional(application->pid) : std::nullopt;
    }
    std::vector<AxWindow> windowsOf(ProcessId pid) {
        return windows().windows(pid).value_or(std::vector<AxWindow>{});
    }

    OpenServices services_;
    x11::X11WindowImages images_{services_.runLoop(), services_->server(), services_->clients()};
    std::list<rig::PlainWindows> apps_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, AccessibilityWindowsContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, WindowListContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, WindowImagesContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, ScreensContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, TaskRunnerContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, WorkspaceContract, X11Harness);

}  // namespace
}  // namespace orvel::contract
