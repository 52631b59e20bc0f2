#include "platform/x11/x11_shell.hpp"

#include <QSystemTrayIcon>

#include <utility>

namespace orvel::x11 {

X11Shell::X11Shell(qt::QtRunLoop& runLoop,
                   std::function<std::optional<KeyCode>(std::uint8_t)> keyDown)
    : eventMonitors_(runLoop, panels_,
                     {.statusButton = [this] { return statusBar_.buttonRect(); },
                      .keyDown = std::move(keyDown)}),
      appControl_([&runLoop] { runLoop.quit(); }) {
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    panels_.setStatusButton([this] { return statusBar_.buttonRect(); });
}

X11Shell::~X11Shell() = default;

bool X11Shell::hasTray() const { return QSystemTrayIcon::isSystemTrayAvailable(); }

}  // namespace orvel::x11
