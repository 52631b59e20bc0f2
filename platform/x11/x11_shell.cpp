#include "platform/x11/x11_shell.hpp"

namespace orvel::x11 {

X11Shell::X11Shell(qt::QtRunLoop& runLoop)
    : eventMonitors_(runLoop, panels_, [this] { return statusBar_.buttonRect(); }),
      appControl_([&runLoop] { runLoop.quit(); }) {
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    panels_.setStatusButton([this] { return statusBar_.buttonRect(); });
}

X11Shell::~X11Shell() = default;

}  // namespace orvel::x11
