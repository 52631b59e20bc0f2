#pragma once

#include "platform/qt/controls/appearance.hpp"
#include "platform/x11/desktop_appearance.hpp"
#include "platform/x11/tray_colors.hpp"
#include "platform/x11/x11_app_control.hpp"
#include "platform/x11/x11_event_monitors.hpp"
#include "platform/x11/x11_haptics.hpp"
#include "platform/x11/x11_native_menu.hpp"
#include "platform/x11/x11_notifications.hpp"
#include "platform/x11/x11_panels.hpp"
#include "platform/x11/x11_status_bar.hpp"

#include <QQmlEngine>

#include <cstdint>
#include <functional>
#include <optional>

namespace orvel::x11 {

/// The services of an X11 session that show something, built together since they share Qt's
/// windows. Needs a QApplication. Main thread.
class X11Shell {
public:
    /// `keyDown` as in `MonitorSources`.
    X11Shell(qt::QtRunLoop& runLoop, std::function<std::optional<KeyCode>(std::uint8_t)> keyDown);
    ~X11Shell();
    X11Shell(const X11Shell&) = delete;
    X11Shell& operator=(const X11Shell&) = delete;

    AppControl& appControl() { return appControl_; }
    EventMonitors& eventMonitors() { return eventMonitors_; }
    Haptics& haptics() { return haptics_; }
    NativeMenus& nativeMenus() { return nativeMenus_; }
    Notifications& notifications() { return notifications_; }
    StatusBar& statusBar() { return statusBar_; }
    /// Whether this desktop shows the icons of programs.
    [[nodiscard]] bool hasTray() const;
    qt::QuickPanelHost& panels() { return panels_; }
    qt::Appearance& appearance() { return appearance_; }

private:
    qt::Appearance appearance_{nullptr};
    DesktopAppearance desktopAppearance_{appearance_};
    QQmlEngine engine_;
    X11Panels native_{appearance_};
    qt::QuickPanelHost panels_{engine_, native_};
    X11StatusBar statusBar_;
    TrayColors trayColors_{
        [this](const std::optional<QColor>& color) { statusBar_.setSymbolColor(color); }};
    X11NativeMenus nativeMenus_{panels_, statusBar_};
    X11Notifications notifications_{panels_};
    X11EventMonitors eventMonitors_;
    X11AppControl appControl_;
    X11Haptics haptics_;
};

}  // namespace orvel::x11
