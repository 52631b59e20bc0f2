#include "tests/platform/contract/accessibility_windows_contract.hpp"
#include "tests/platform/contract/screens_contract.hpp"
#include "tests/platform/contract/task_runner_contract.hpp"
#include "tests/platform/contract/window_list_contract.hpp"
#include "tests/session/service_session.hpp"
#include "tools/rig/windows.hpp"

#include <algorithm>
#include <list>
#include <string>
#include <vector>

// The services of an X11 session are held to what every desktop does. All harnesses share one
// embedded desktop; each opens the services anew and closes what it opened.

namespace orvel::contract {
namespace {

using test::OpenServices;

rig::EmbeddedDesktop& sharedDesktop() {
    static rig::EmbeddedDesktop desktop;
    return desktop;
}

class X11Harness {
public:
    X11Harness() : services_(sharedDesktop()) {}
    ~X11Harness() {
        apps_.clear();
        EXPECT_TRUE(test::eventually([] { return rig::managedWindows(sharedDesktop().x()).size(); },
                                     testing::Eq(0U)));
    }

    void settle() { services_.settle(); }

    AccessibilityWindows& windows() { return services_->accessibilityWindows(); }
    WindowList& list() { return services_->windowList(); }
    Screens& screens() { return services_->screens(); }
    TaskRunner& tasks() { return services_->taskRunner(); }

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
        focus(pid);
        return pid;
    }
    void focus(ProcessId pid) {
        services_->workspace().activate(pid, kActivateIgnoringOtherApps);
        const auto front = [&] { return services_->workspace().frontmostApplication()->pid; };
        EXPECT_TRUE(test::eventually(services_, front, testing::Eq(pid)));
    }
    void minimise(ProcessId pid) {
        for (const auto& window : windowsOf(pid)) EXPECT_TRUE(windows().setMinimized(window, true));
    }
    void close(ProcessId pid) {
        apps_.remove_if([pid](rig::PlainWindows& app) { return app.process().pid() == pid; });
        const auto isGone = [&] { return windowsOf(pid).empty(); };
        EXPECT_TRUE(test::eventually(services_, isGone, testing::Eq(true)));
    }

    Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments) {
        return tasks().run(path, arguments);
    }
    void hasProgram(const std::string& path, const std::vector<std::string>&, const std::string&) {
        EXPECT_EQ(::access(path.c_str(), X_OK), 0) << path;
    }
    void hasNoProgram(const std::string& path) { EXPECT_NE(::access(path.c_str(), F_OK), 0); }

private:
    std::vector<AxWindow> windowsOf(ProcessId pid) {
        return windows().windows(pid).value_or(std::vector<AxWindow>{});
    }

    OpenServices services_;
    std::list<rig::PlainWindows> apps_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, AccessibilityWindowsContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, WindowListContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, ScreensContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, TaskRunnerContract, X11Harness);

}  // namespace
}  // namespace orvel::contract
