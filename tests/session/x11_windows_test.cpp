#include "tests/session/service_session.hpp"
#include "tools/rig/windows.hpp"
#include "tools/rig/xterm_app.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel::test {
namespace {

using testing::Eq;
using testing::Field;
using testing::IsEmpty;
using testing::Optional;

using Clock = std::chrono::steady_clock;

/// The windows of a real desktop, seen and moved through the services, under each of the window
/// managers.
class X11Windows : public testing::TestWithParam<rig::WindowManager::Kind> {
protected:
    static void TearDownTestSuite() { desktops.clear(); }

    X11Windows() {
        auto& own = desktops[GetParam()];
        if (own == nullptr) {
            own = std::make_unique<rig::EmbeddedDesktop>(
                rig::EmbeddedDesktop::Options{.size = {}, .windowManager = GetParam()});
        }
        desktop_ = own.get();
        EXPECT_TRUE(eventually([this] { return rig::managedWindows(desktop().x()); }, IsEmpty()));
        services_.emplace(*desktop_);
    }
    void TearDown() override {
        // The applications of a test end before this; the next test begins with none.
        services_.reset();
    }

    rig::EmbeddedDesktop& desktop() { return *desktop_; }
    rig::PlainWindows startApp() { return {desktop().environment(), desktop().x()}; }

    /// The accessibility window of an X window, as soon as the services know it.
    AxWindow axWindow(const rig::PlainWindows& app, rig::WindowId window) {
        return axWindow(pidOf(app), window);
    }
    AxWindow axWindow(ProcessId pid, rig::WindowId window) {
        std::optional<AxWindow> found;
        const auto look = [&] {
            const auto listed = ax().windows(pid);
            for (const auto& each : listed.value_or(std::vector<AxWindow>{})) {
                if (x11::X11AccessibilityWindows::windowId(each) == window) found = each;
            }
            return found.has_value();
        };
        EXPECT_TRUE(eventually(*services_, look, Eq(true)));
        return found.value_or(AxWindow{});
    }

    static ProcessId pidOf(const rig::PlainWindows& app) {
        return const_cast<rig::PlainWindows&>(app).process().pid();
    }
    AccessibilityWindows& ax() { return (*services_)->accessibilityWindows(); }
    Workspace& workspace() { return (*services_)->workspace(); }
    std::optional<ProcessId> frontPid() {
        const auto front = workspace().frontmostApplication();
        return front ? std::optional(front->pid) : std::nullopt;
    }

    using Desktops = std::map<rig::WindowManager::Kind, std::unique_ptr<rig::EmbeddedDesktop>>;
    static inline Desktops desktops;
    rig::EmbeddedDesktop* desktop_ = nullptr;
    std::optional<OpenServices> services_;
};

INSTANTIATE_TEST_SUITE_P(UnderEachWindowManager, X11Windows,
                         testing::Values(rig::WindowManager::Kind::openbox,
                                         rig::WindowManager::Kind::xfwm4),
                         [](const auto& kind) {
                             return kind.param == rig::WindowManager::Kind::openbox ? "Openbox"
                                                                                    : "Xfwm4";
                         });

TEST_P(X11Windows, AWindowIsPutExactlyWhereItIsWantedFrameIncluded) {
    auto app = startApp();
    const auto id = app.open({.title = "moved"});
    const auto window = axWindow(app, id);
    ASSERT_TRUE(ax().setPosition(window, {100, 60}));
    ASSERT_TRUE(ax().setSize(window, {700, 500}));
    EXPECT_EQ(ax().attributes(window).position, (AxPoint{100, 60}));
    EXPECT_EQ(ax().attributes(window).size, (Size{700, 500}));
    // The window manager's frame begins where the window was put.
    EXPECT_TRUE(eventually(
        *services_, [&] { return rig::frameOf(desktop().x(), id); },
        testing::AllOf(
            Field(&rig::WindowFrame::y, testing::AllOf(testing::Gt(60), testing::Lt(100))),
            Field(&rig::WindowFrame::width, testing::AllOf(testing::Gt(650), testing::Le(700))),
            Field(&rig::WindowFrame::height, testing::AllOf(testing::Gt(400), testing::Lt(500))))));
}

TEST_P(X11Windows, AWindowThatCameWhileAnotherProgramHeldTheServerIsKnownOnceItLetsGo) {
    auto app = startApp();
    rig::waitForFocus(desktop().x(), app.open({}));
    rig::waitForWindowManager(desktop().x());
    {
        const rig::ServerGrab grab(desktop().x());
        services_->settle();
    }
    EXPECT_TRUE(eventually(
        *services_, [this] { return frontPid(); }, Optional(pidOf(app))));
}

TEST_P(X11Windows, TheSamePlaceAgainBringsAWindowBackThatWasMovedInBetween) {
    auto app = startApp();
    const auto window = axWindow(app, app.open({}));
    for (const AxPoint place : {AxPoint{200, 100}, AxPoint{0, 0}, AxPoint{200, 100}}) {
        ASSERT_TRUE(ax().setPosition(window, place));
        EXPECT_EQ(ax().attributes(window).position, place);
    }
}

TEST_P(X11Windows, AWindowManagerThatIsLateStillPutsAWindowWhereItWasWanted) {
    auto app = startApp();
    const auto id = app.open({});
    const auto window = axWindow(app, id);
    ASSERT_TRUE(ax().setPosition(window, {100, 60}));
    auto& windowManager = desktop().windowManager().process();
    windowManager.signal(SIGSTOP);
    const auto begin = Clock::now();
    EXPECT_TRUE(ax().setPosition(window, {0, 0}));
    EXPECT_TRUE(ax().setSize(window, {700, 500}));
    EXPECT_TRUE(ax().setPosition(window, {300, 200}));
    EXPECT_EQ(ax().attributes(window).position, (AxPoint{300, 200}));
    EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(100));
    // It hangs: that is said, and windows read as they are.
    EXPECT_TRUE(eventually(
        *services_,
        [&] {
            return ax().setPosition(window, {300, 200});
        },
        Eq(false)));
    windowManager.signal(SIGCONT);
    EXPECT_TRUE(eventually(
        *services_, [&] { return rig::frameOf(desktop().x(), id); },
        testing::AllOf(Field(&rig::WindowFrame::width, testing::Gt(650)),
                       Field(&rig::WindowFrame::x, testing::Ge(300)),
                       Field(&rig::WindowFrame::y, testing::Gt(200)))));
    EXPECT_TRUE(eventually(
        *services_, [&] { return ax().attributes(window).size; }, Optional(Size{700, 500})));
    EXPECT_TRUE(eventually(
        *services_, [&] { return ax().attributes(window).position; }, Optional(AxPoint{300, 200})));
}

TEST_P(X11Windows, AMaximisedWindowIsMovedAllTheSame) {
    auto app = startApp();
    const auto id = app.open({.title = "maximised"});
    const auto window = axWindow(app, id);
    rig::runTool(
        {"wmctrl", "-i", "-r", std::to_string(id), "-b", "add,maximized_vert,maximized_horz"},
        desktop().environment());
    ASSERT_TRUE(eventually(
        *services_, [&] { return ax().attributes(window).size->width; }, testing::Ge(1900)));
    EXPECT_TRUE(ax().setPosition(window, {300, 200}));
    EXPECT_TRUE(ax().setSize(window, {640, 480}));
    EXPECT_EQ(ax().attributes(window).position, (AxPoint{300, 200}));
    EXPECT_EQ(ax().attributes(window).size, (Size{640, 480}));
}

TEST_P(X11Windows, ASizeBelowTheMinimumBecomesTheMinimum) {
    auto app = startApp();
    const auto window = axWindow(app, app.open({.width = 900, .minWidth = 800, .minHeight = 150}));
    EXPECT_TRUE(ax().setSize(window, {400, 300}));
    const auto size = ax().attributes(window).size;
    ASSERT_TRUE(size);
    EXPECT_GE(size->width, 800);
    EXPECT_LE(size->width, 820);
}

TEST_P(X11Windows, ASizeBetweenTwoStepsOfATerminalBecomesAWholeNumberOfCells) {
    const rig::XtermApp terminal(desktop().home(), desktop().environment(), desktop().x());
    ASSERT_TRUE(eventually(
        *services_, [&] { return workspace().frontmostApplication().has_value(); }, Eq(true)));
    const auto window = axWindow(*frontPid(), terminal.window());
    EXPECT_TRUE(ax().setSize(window, {603, 401}));
    const auto size = ax().attributes(window).size;
    ASSERT_TRUE(size);
    EXPECT_NEAR(size->width, 603, 10);
    EXPECT_NEAR(size->height, 401, 20);
    EXPECT_TRUE(ax().setSize(window, *size));
    EXPECT_EQ(ax().attributes(window).size, size);
}

TEST_P(X11Windows, AWindowIsMinimisedAndComesBackInFront) {
    auto app = startApp();
    const auto first = axWindow(app, app.open({.title = "first"}));
    const auto second = app.open({.title = "second"});
    EXPECT_TRUE(ax().setMinimized(first, true));
    EXPECT_THAT(ax().attributes(first).isMinimized, Optional(true));
    EXPECT_TRUE(ax().setMinimized(first, false));
    EXPECT_THAT(ax().attributes(first).isMinimized, Optional(false));
    EXPECT_TRUE(eventually([&] { return rig::activeWindow(desktop().x()); },
                           testing::Ne(std::optional(second))));
}

TEST_P(X11Windows, AnApplicationWhoseOnlyWindowIsMinimisedStaysInFront) {
    auto app = startApp();
    const auto window = axWindow(app, app.open({}));
    ASSERT_TRUE(eventually(
        *services_, [&] { return frontPid(); }, Optional(pidOf(app))));
    EXPECT_TRUE(ax().setMinimized(window, true));
    services_->settle();
    EXPECT_EQ(frontPid(), pidOf(app));
    EXPECT_FALSE(ax().focusedWindow(pidOf(app)));
    EXPECT_EQ(ax().windows(pidOf(app))->size(), 1U);
}

TEST_P(X11Windows, RaisingPutsAWindowAboveOthers) {
    auto app = startApp();
    const auto below = app.open({.title = "below"});
    const auto above = app.open({.title = "above"});
    ASSERT_TRUE(eventually([&] { return rig::activeWindow(desktop().x()); }, Optional(above)));
    EXPECT_TRUE(ax().raise(axWindow(app, below)));
    EXPECT_TRUE(eventually([&] { return rig::managedWindows(desktop().x()).back(); }, Eq(below)));
    // Xfwm4 has no request for the order alone: there the raised window gets the keyboard too.
    if (GetParam() == rig::WindowManager::Kind::openbox) {
        EXPECT_THAT(rig::activeWindow(desktop().x()), Optional(above));
    }
}

TEST_P(X11Windows, FocusingAWindowGivesItTheKeyboard) {
    auto app = startApp();
    const auto below = app.open({.title = "below"});
    app.open({.title = "above"});
    EXPECT_TRUE(ax().setFocused(axWindow(app, below), true));
    EXPECT_TRUE(eventually([&] { return rig::activeWindow(desktop().x()); }, Optional(below)));
    EXPECT_TRUE(eventually(
        *services_,
        [&] { return x11::X11AccessibilityWindows::windowId(*ax().focusedWindow(pidOf(app))); },
        Eq(below)));
}

TEST_P(X11Windows, AWindowThatIsGoneReadsAsNothingAndTakesNothing) {
    auto app = startApp();
    const auto id = app.open({});
    const auto window = axWindow(app, id);
    app.destroy(id);
    ASSERT_TRUE(eventually([&] { return rig::managedWindows(desktop().x()); }, IsEmpty()));
    EXPECT_FALSE(ax().attributes(window).role);
    EXPECT_FALSE(ax().attributes(window).position);
    EXPECT_FALSE(ax().setPosition(window, {0, 0}));
    EXPECT_FALSE(ax().setMinimized(window, true));
    EXPECT_FALSE(ax().raise(window));
    EXPECT_FALSE(ax().setFocused(window, true));
}

TEST_P(X11Windows, AHungApplicationsWindowIsMovedWithoutWaitingForIt) {
    auto app = startApp();
    const auto window = axWindow(app, app.open({}));
    app.process().signal(SIGSTOP);
    const auto begin = Clock::now();
    EXPECT_TRUE(ax().setPosition(window, {50, 40}));
    EXPECT_TRUE(ax().setSize(window, {500, 400}));
    EXPECT_EQ(ax().attributes(window).position, (AxPoint{50, 40}));
    EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(300));
    app.process().signal(SIGCONT);
}

TEST_P(X11Windows, TheListHoldsMinimisedWindowsFrontToBack) {
    auto app = startApp();
    const auto hidden = app.open({.title = "hidden"});
    const auto back = app.open({.title = "back"});
    const auto front = app.open({.title = "front"});
    ASSERT_TRUE(ax().setMinimized(axWindow(app, hidden), true));
    const auto numbers = [&](WindowListScope scope) {
        std::vector<WindowNumber> found;
        for (const auto& window : (*services_)->windowList().windows(scope))
            found.push_back(window.number);
        return found;
    };
    EXPECT_THAT(numbers(WindowListScope::onScreen), testing::ElementsAre(front, back));
    EXPECT_THAT(numbers(WindowListScope::all), testing::UnorderedElementsAre(front, back, hidden));
    const auto all = (*services_)->windowList().windows(WindowListScope::all);
    EXPECT_THAT(all, testing::Each(Field(&WindowInfo::pid, pidOf(app))));
    EXPECT_THAT(all, testing::Each(Field(&WindowInfo::layer, 0)));
}

TEST_P(X11Windows, BoundsInTheListAreThoseOfTheAccessibilityWindow) {
    auto app = startApp();
    const auto window = axWindow(app, app.open({.title = "same"}));
    const auto listed = (*services_)->windowList().windows(WindowListScope::all);
    ASSERT_EQ(listed.size(), 1U);
    const auto attributes = ax().attributes(window);
    EXPECT_EQ(listed[0].bounds.origin(), attributes.position);
    EXPECT_EQ(listed[0].bounds.size(), attributes.size);
    EXPECT_EQ(listed[0].name, attributes.title);
}

TEST_P(X11Windows, WindowsOfOneProgramInSeveralProcessesAreOneApplication) {
    const rig::XtermApp first(desktop().home(), desktop().environment(), desktop().x());
    rig::ChildProcess second(
        {.arguments = {"xterm", "-title", "another"}, .environment = desktop().environment()});
    rig::waitForWindow(desktop().x(), "another");
    const auto terminals = [&] {
        std::vector<RunningApplication> found;
        for (const auto& each : workspace().runningApplications()) {
            if (each.name == "XTerm") found.push_back(each);
        }
        return found;
    };
    ASSERT_TRUE(eventually(
        *services_, [&] { return (*services_)->windowList().windows(WindowListScope::all).size(); },
        Eq(2U)));
    ASSERT_EQ(terminals().size(), 1U);
    EXPECT_EQ(terminals()[0].bundleId, "debian-xterm.desktop");
    EXPECT_EQ(ax().windows(terminals()[0].pid)->size(), 2U);
}

TEST_P(X11Windows, TheApplicationInFrontBearsTheIdentifierOfItsCounterpart) {
    const rig::XtermApp terminal(desktop().home(), desktop().environment(), desktop().x());
    EXPECT_TRUE(eventually(
        *services_,
        [&] {
            return workspace().frontmostApplication().value_or(FrontmostApplication{}).bundleId;
        },
        Optional(std::string("com.apple.Terminal"))));
    const auto path = workspace().applicationPath("com.apple.Terminal");
    ASSERT_TRUE(path);
    EXPECT_FALSE(workspace().displayName(*path).empty());
}

TEST_P(X11Windows, TheFrontApplicationFollowsTheActiveWindow) {
    auto one = startApp();
    auto other = startApp();
    const auto first = one.open({.title = "one", .className = "One"});
    other.open({.title = "other", .className = "Other"});
    ASSERT_TRUE(eventually(
        *services_, [&] { return frontPid(); }, Optional(pidOf(other))));
    rig::focusWindow(desktop().x(), first);
    EXPECT_TRUE(eventually(
        *services_, [&] { return frontPid(); }, Optional(pidOf(one))));
}

TEST_P(X11Windows, ActivatingAnApplicationBringsItBackFromItsMinimisedState) {
    auto app = startApp();
    const auto id = app.open({});
    const rig::XtermApp terminal(desktop().home(), desktop().environment(), desktop().x());
    ASSERT_TRUE(ax().setMinimized(axWindow(app, id), true));
    workspace().activate(pidOf(app), kActivateIgnoringOtherApps);
    EXPECT_TRUE(eventually([&] { return rig::activeWindow(desktop().x()); }, Optional(id)));
}

TEST_P(X11Windows, TerminatingAnApplicationAsksEachOfItsWindowsToClose) {
    auto app = startApp();
    const auto first = app.open({.title = "first"});
    const auto second = app.open({.title = "second"});
    axWindow(app, second);
    workspace().terminate(pidOf(app));
    EXPECT_TRUE(app.wasClosed(first));
    EXPECT_TRUE(app.wasClosed(second));
}

TEST_P(X11Windows, AnApplicationThatEndedIsNoLongerListed) {
    {
        auto app = startApp();
        axWindow(app, app.open({}));
    }
    EXPECT_TRUE(eventually(
        *services_, [&] { return workspace().runningApplications().size(); }, Eq(0U)));
    EXPECT_TRUE(eventually(
        *services_, [&] { return frontPid(); }, Eq(std::nullopt)));
}

}  // namespace
}  // namespace orvel::test
