#include "platform/x11/x11_shell.hpp"
#include "tests/platform/contract/app_control_contract.hpp"
#include "tests/platform/contract/native_menu_contract.hpp"
#include "tests/platform/contract/notifications_contract.hpp"
#include "tests/platform/contract/panels_contract.hpp"
#include "tests/platform/contract/run_loop_contract.hpp"
#include "tests/platform/contract/status_bar_contract.hpp"
#include "tests/session/shell_desktop.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/plain_windows.hpp"
#include "tools/rig/tray.hpp"
#include "tools/rig/windows.hpp"

#include <QApplication>
#include <QMenu>
#include <QQuickWindow>
#include <QRasterWindow>
#include <QScreen>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>
#include <optional>
#include <string>

// What shows something in an X11 session is held to what every desktop does, with a real tray, a
// real window manager and a real mouse.

namespace orvel::contract {
namespace {

rig::EmbeddedDesktop& desktop() { return test::ShellDesktop::get(); }

/// Whether it holds in time; what Qt is told meanwhile is handled.
bool holds(const std::function<bool()>& condition) {
    return rig::pollUntil([&] {
        QGuiApplication::sync();
        return condition();
    });
}

void clickAt(QPoint point, rig::Button button = rig::Button::left) {
    desktop().state().warpPointer({point.x(), point.y()});
    desktop().mouse().click(button);
}

class X11Harness {
public:
    RunLoop& loop() { return loop_; }
    bool runUntil(const std::function<bool()>& isDone) { return contract::holds(isDone); }
    void runFor(Duration duration) {
        const Instant end = loop_.now() + duration;
        EXPECT_TRUE(contract::holds([&] { return loop_.now() >= end; }));
    }
    /// What we asked for is done, and what it caused as well.
    static void settle() {
        for (int round = 0; round < 2; ++round) {
            QGuiApplication::sync();
            rig::waitForWindowManager(desktop().x());
        }
        QGuiApplication::sync();
    }

    StatusBar& bar() {
        tray_.emplace(desktop().environment(), desktop().x());
        EXPECT_TRUE(contract::holds(QSystemTrayIcon::isSystemTrayAvailable));
        return bar_;
    }
    static ScreenRect screen() {
        const QSize size = QGuiApplication::primaryScreen()->size();
        return {0, 0, double(size.width()), double(size.height())};
    }
    /// The tray has taken the item in and moves it no more.
    void waitForItem() {
        EXPECT_TRUE(contract::holds([&] {
            const auto before = tray_->icon();
            settle();
            return before && before == tray_->icon();
        }));
    }
    void click(StatusItemButton button) {
        const rig::ScreenPoint icon = tray_->waitForIcon().centre();
        clickAt({icon.x, icon.y},
                button == StatusItemButton::left ? rig::Button::left : rig::Button::right);
    }

    Panels& panels() { return shell_.panels(); }

    Notifications& notifications() {
        focus(own_);
        return shell_.notifications();
    }
    void resignKey(PanelId id) {
        const auto panel =
            panels().create({.id = id, .contentRect = {200, 200, 100, 100}, .canBecomeKey = true});
        panel->makeKeyAndOrderFront();
        waitForFocus(*shell_.panels().window(id));
        focus(own_);
    }
    void resignActive() {
        rig::PlainWindows other(desktop().environment(), desktop().x());
        other.open({});
        EXPECT_TRUE(contract::holds(
            [] { return QGuiApplication::applicationState() != Qt::ApplicationActive; }));
    }

    NativeMenus& menus() { return shell_.nativeMenus(); }
    void choose(std::string_view title) {
        const QMenu& menu = openMenu();
        for (QAction* action : menu.actions()) {
            if (action->text().toStdString() != title) continue;
            clickAt(menu.mapToGlobal(menu.actionGeometry(action).center()));
        }
        waitUntilClosed();
    }
    void dismiss() {
        openMenu();
        desktop().keyboard().tap("Escape");
        waitUntilClosed();
    }

private:
    /// A window manager that still works on it would give the keyboard to and fro.
    static void waitForFocus(const QWindow& window) {
        EXPECT_TRUE(contract::holds(
            [&] { return window.isExposed() && QGuiApplication::focusWindow() == &window; }));
        settle();
    }
    static void focus(QWindow& window) {
        window.setGeometry(400, 300, 200, 100);
        window.show();
        window.requestActivate();
        waitForFocus(window);
    }
    static const QMenu& openMenu() {
        EXPECT_TRUE(contract::holds([] {
            const QWidget* popup = QApplication::activePopupWidget();
            return popup != nullptr && popup->windowHandle()->isExposed();
        }));
        return *qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    static void waitUntilClosed() {
        EXPECT_TRUE(contract::holds([] { return QApplication::activePopupWidget() == nullptr; }));
    }

    std::optional<rig::Tray> tray_;
    qt::QtRunLoop loop_;
    x11::X11Shell shell_{loop_, [](std::uint8_t) { return std::nullopt; }};
    x11::X11StatusBar bar_;
    /// A window of this program that is no panel.
    QRasterWindow own_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, RunLoopContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, StatusBarContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, PanelsContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, NotificationsContract, X11Harness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, NativeMenuContract, X11Harness);

/// The program ends by its run loop's.
class X11ControlHarness {
public:
    AppControl& control() { return control_; }
    bool wasAskedToEnd() const { return wasAsked_; }

private:
    bool wasAsked_ = false;
    x11::X11AppControl control_{[this] { wasAsked_ = true; }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, AppControlContract, X11ControlHarness);

}  // namespace
}  // namespace orvel::contract
