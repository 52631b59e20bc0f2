#include "platform/x11/input_hub.hpp"
#include "platform/x11/x11_shell.hpp"
#include "tests/platform/contract/event_monitors_contract.hpp"
#include "tests/session/shell_desktop.hpp"
#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/key_probe.hpp"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickWindow>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Monitors in the embedded desktop of this process, with a panel of ours and another application.

namespace orvel::contract {
namespace {

using test::ShellDesktop;

constexpr ScreenRect kPanelFrame{60, 60, 300, 200};

rig::PhysicalKey physicalKey(KeyCode code) {
    const std::map<KeyCode, const char*> names{
        {key::escape, "Escape"}, {key::a, "a"}, {key::z, "z"}};
    return names.at(code);
}

rig::Button buttonOf(EventMask type) {
    if (type == monitor_mask::leftMouseDown) return rig::Button::left;
    return type == monitor_mask::rightMouseDown ? rig::Button::right : rig::Button::middle;
}

class X11Harness {
public:
    X11Harness() : session_(x11::X11Session::open().value()), hub_(*session_) {
        const auto counted = [this](const MonitoredEvent&) {
            ++told_;
            return true;
        };
        // Installed first, they are told before those of the test in the same breath.
        global_ = monitors().add(MonitorScope::global, kEverything, "test", counted);
        local_ = monitors().add(MonitorScope::local, kEverything, "test", counted);
    }
    ~X11Harness() {
        settle();
        EXPECT_EQ(told_, made_) << "a press was told more than once";
    }

    EventMonitors& monitors() { return shell_.eventMonitors(); }
    void settle() {
        ShellDesktop::get().x().sync();
        QCoreApplication::processEvents();
    }

    void click(EventMask type, std::optional<PanelId> window) {
        showPanels(window);
        const auto area = window ? shell_.panels().window(*window)->geometry() : QRect();
        const int x = window ? area.center().x() : probe_.centreX();
        const int y = window ? area.center().y() : probe_.centreY();
        ShellDesktop::get().state().warpPointer({x, y});
        ShellDesktop::get().mouse().click(buttonOf(type));
        waitUntilTold();
    }
    void pressKey(KeyCode key, std::optional<PanelId> window) {
        showPanels(window);
        if (window) {
            QQuickWindow* panel = shell_.panels().window(*window);
            panels_.at(*window)->makeKeyAndOrderFront();
            waitFor([panel] { return QGuiApplication::focusWindow() == panel; });
        } else {
            probe_.focus();
            waitFor([] { return QGuiApplication::focusWindow() == nullptr; });
        }
        type(key);
        waitUntilTold();
    }
    /// Without waiting for anybody to be told.
    void type(KeyCode key) { ShellDesktop::get().keyboard().tap(physicalKey(key)); }

private:
    static constexpr EventMask kEverything = monitor_mask::leftMouseDown |
                                             monitor_mask::rightMouseDown |
                                             monitor_mask::otherMouseDown | monitor_mask::keyDown;

    void showPanels(std::optional<PanelId> wanted) {
        if (!wanted || panels_.contains(*wanted)) return;
        auto panel = shell_.panels().create(
            {.id = *wanted, .contentRect = kPanelFrame, .canBecomeKey = true});
        panel->setFrame(kPanelFrame);
        panel->orderFrontRegardless();
        QQuickWindow* window = shell_.panels().window(*wanted);
        waitFor([window] { return window->isExposed(); });
        panels_.emplace(*wanted, std::move(panel));
    }
    void waitUntilTold() {
        ++made_;
        EXPECT_TRUE(test::eventually(
            [this] {
                settle();
                return told_;
            },
            testing::Ge(made_)));
    }
    void waitFor(const std::function<bool()>& condition) {
        EXPECT_TRUE(test::eventually(
            [&] {
                settle();
                return condition();
            },
            true));
    }

    rig::KeyProbe probe_{ShellDesktop::get().environment(),
                         ShellDesktop::get().x(),
                         {.title = "another application", .geometry = "600x400+900+400"}};
    std::unique_ptr<x11::X11Session> session_;
    x11::InputHub hub_;
    qt::QtRunLoop runLoop_;
    x11::X11Shell shell_{runLoop_,
                         [this](x11::XKeycode key) { return hub_.map().keyDownCodeOf(key); }};
    std::map<PanelId, std::unique_ptr<Panel>> panels_;
    std::unique_ptr<EventMonitor> global_;
    std::unique_ptr<EventMonitor> local_;
    int told_ = 0;
    int made_ = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, EventMonitorsContract, X11Harness);

class MonitorsBehindTheTap : public testing::Test {
protected:
    X11Harness harness;
    std::vector<KeyCode> keys;
    std::unique_ptr<EventMonitor> monitor =
        harness.monitors().add(MonitorScope::global, monitor_mask::keyDown, "clipboard",
                               [this](const MonitoredEvent& event) {
                                   keys.push_back(event.keyCode);
                                   return true;
                               });
};

TEST_F(MonitorsBehindTheTap, SeeAKeyOnceWhileTheTapHoldsTheKeyboard) {
    test::TapHost tap(ShellDesktop::get().environment());
    harness.pressKey(key::escape, std::nullopt);
    harness.pressKey(key::a, std::nullopt);
    EXPECT_THAT(keys, testing::ElementsAre(key::escape, key::a));
    tap.quit();
}

TEST_F(MonitorsBehindTheTap, DoNotSeeAKeyThatARuleKeeps) {
    test::TapHost tap(ShellDesktop::get().environment(), {"swallow", std::to_string(key::a)});
    harness.type(key::a);
    harness.pressKey(key::z, std::nullopt);
    EXPECT_THAT(keys, testing::ElementsAre(key::z));
    tap.quit();
}

TEST_F(MonitorsBehindTheTap, AModifierIsNoKeyDown) {
    ShellDesktop::get().keyboard().press("Shift_L");
    harness.pressKey(key::z, std::nullopt);
    ShellDesktop::get().keyboard().release("Shift_L");
    EXPECT_THAT(keys, testing::ElementsAre(key::z));
}

}  // namespace
}  // namespace orvel::contract
