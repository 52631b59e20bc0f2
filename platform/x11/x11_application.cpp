#include "platform/x11/x11_application.hpp"

#include <QApplication>
#include <QQuickWindow>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace orvel::x11 {

namespace {

/// 0 while Qt does not run. What runs at exit is given no context.
int statusWhenGone = 0;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void endedByQt() {
    if (statusWhenGone == 0) return;
    std::fputs("orvel: the X server is gone\n", stderr);
    ::_exit(statusWhenGone);
}

}  // namespace

X11Application::X11Application(int& argc, char** argv, int goneStatus) {
    // A small panel is drawn fastest, and with least memory, without the graphics card.
    ::setenv("QT_QUICK_BACKEND", "software", 0);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    QQuickWindow::setDefaultAlphaBuffer(true);
    application_ = std::make_unique<QApplication>(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvel"));
    QApplication::setQuitOnLastWindowClosed(false);
    statusWhenGone = goneStatus;
    std::atexit(endedByQt);
}

X11Application::~X11Application() { statusWhenGone = 0; }

}  // namespace orvel::x11
