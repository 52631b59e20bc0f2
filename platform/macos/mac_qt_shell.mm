#include "platform/macos/mac_qt_shell.hpp"

#include "platform/macos/mac_look.hpp"
#include "platform/macos/mac_quick_views.hpp"
#include "platform/qt/controls/appearance.hpp"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

namespace orvel::macos {

namespace {

/// A guest: menu bar, delegate and activation stay those of the native application.
struct GuestApplication {
    GuestApplication() {
        QCoreApplication::setAttribute(Qt::AA_PluginApplication);
        // Compiling while running would need a right that nothing else here needs.
        qputenv("QV4_FORCE_INTERPRETER", "1");
        QQuickWindow::setDefaultAlphaBuffer(true);
        application.emplace(count, arguments);
        QGuiApplication::setApplicationName(QStringLiteral("orvelkit"));
        QGuiApplication::setApplicationDisplayName(QStringLiteral("Orvel"));
        QGuiApplication::setQuitOnLastWindowClosed(false);
    }

    char name[9] = "orvelkit";
    char* arguments[2] = {name, nullptr};
    int count = 1;
    std::optional<QGuiApplication> application;
};

}  // namespace

struct MacQtShell::Impl {
    Impl() {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        follow();
    }
    void follow() {
        const Look look = readLook();
        appearance.setDark(look.isDark);
        appearance.setComposited(look.isTranslucent);
        appearance.setPrefersReducedMotion(look.isStill);
    }

    GuestApplication guest;
    qt::Appearance appearance{nullptr};
    QQmlEngine engine;
    MacQuickViews views{engine};
    LookNotices notices{[this] { follow(); }};
};

MacQtShell::MacQtShell() : impl_(std::make_unique<Impl>()) {}

MacQtShell::~MacQtShell() = default;

PanelContents& MacQtShell::panelContents() { return impl_->views; }

qt::PanelContentHost& MacQtShell::contentHost() { return impl_->views; }

int MacQtShell::run() { return QGuiApplication::exec(); }

}  // namespace orvel::macos
