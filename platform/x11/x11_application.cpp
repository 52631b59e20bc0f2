#include "platform/x11/x11_application.hpp"

#include "platform/qt/chinese_fonts.hpp"

#include <QApplication>
#include <QQuickWindow>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace orvel::x11 {

namespace {

// What runs at exit, and what Qt calls, is given no context.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
/// 0 while Qt does not run.
int statusWhenGone = 0;
bool isGoneSaid = false;
QtMessageHandler qtMessages = nullptr;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void endedByQt() {
    if (statusWhenGone == 0) return;
    X11Application::sayServerGone();
    ::_exit(statusWhenGone);
}

/// Qt would tell the same beside us, in words for programmers.
void withoutLostConnection(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(QLatin1String("The X11 connection broke"))) {
        qtMessages(type, context, text);
    }
}

}  // namespace

X11Application::X11Application(int& argc, char** argv, int goneStatus) {
    // A small panel is drawn fastest, and with least memory, without the graphics card.
    ::setenv("QT_QUICK_BACKEND", "software", 0);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    QQuickWindow::setDefaultAlphaBuffer(true);
    qtMessages = qInstallMessageHandler(withoutLostConnection);
    application_ = std::make_unique<QApplication>(argc, argv);
    qt::preferSimplifiedChinese();
    QApplication::setApplicationName(QStringLiteral("orvel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvel"));
    QApplication::setQuitOnLastWindowClosed(false);
    statusWhenGone = goneStatus;
    std::atexit(endedByQt);
}

X11Application::~X11Application() { statusWhenGone = 0; }

void X11Application::sayServerGone() {
    std::fflush(stdout);
    if (!std::exchange(isGoneSaid, true)) std::fputs("orvel: the X server is gone\n", stderr);
}

}  // namespace orvel::x11
