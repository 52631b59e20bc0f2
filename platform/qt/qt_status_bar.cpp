#include "platform/qt/qt_status_bar.hpp"

#include "platform/qt/desktop_coordinates.hpp"

#include <QCursor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace orvel::qt {

namespace {

/// Whether the tray draws the menu itself and sends no right click.
bool isMenuDrawnByTray() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    return bus.interface()->isServiceRegistered(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

StatusItemClick clickOf(QSystemTrayIcon::ActivationReason reason) {
    StatusItemClick click;
    if (reason == QSystemTrayIcon::Context) click.button = StatusItemButton::right;
    if (QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier)) {
        click.flags |= flag::control;
    }
    return click;
}

}  // namespace

QtStatusBar::QtStatusBar() = default;
QtStatusBar::~QtStatusBar() = default;

void QtStatusBar::createItem(const StatusItemSpec& spec,
                             std::function<void(const StatusItemClick&)> clicked) {
    clicked_ = std::move(clicked);
    tray_.takesNames = isMenuDrawnByTray();
    const QIcon icon = trayIcon(spec.image, tray_);
    symbol_ = icon.isNull() ? spec.fallbackSymbol : spec.image;
    icon_ = std::make_unique<QSystemTrayIcon>(icon.isNull() ? trayIcon(symbol_, tray_) : icon);
    icon_->setToolTip(QStringLiteral("Orvel"));
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) { activated(reason); });
    if (tray_.takesNames) exportMenu();
    icon_->show();
}

void QtStatusBar::exportMenu() {
    exportedMenu_ = std::make_unique<QMenu>();
    // The tray asks right before it draws the menu; a right click fills it.
    QObject::connect(exportedMenu_.get(), &QMenu::aboutToShow, exportedMenu_.get(),
                     [this] { clicked_({.button = StatusItemButton::right}); });
    icon_->setContextMenu(exportedMenu_.get());
    clicked_({.button = StatusItemButton::right});
}

QMenu* QtStatusBar::exportedMenu() { return exportedMenu_.get(); }

void QtStatusBar::activated(QSystemTrayIcon::ActivationReason reason) {
    const bool isLeft =
        reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
    if (!isLeft && reason != QSystemTrayIcon::Context) return;
    if (exportedMenu_ && !isLeft) return;
    lastClick_ = QCursor::pos();
    clicked_(clickOf(reason));
}

QRect QtStatusBar::buttonRect() const { return icon_ ? icon_->geometry() : QRect(); }

std::optional<ScreenRect> QtStatusBar::buttonFrame() const {
    if (const QRect rect = buttonRect(); !rect.isEmpty()) return fromQt(rect);
    if (lastClick_) return fromQt(QRect(*lastClick_, QSize(1, 1)));
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return std::nullopt;
    const QRect available = screen->availableGeometry();
    return fromQt(QRect(available.topRight(), QSize(1, 1)));
}

void QtStatusBar::setSymbolColor(std::optional<QColor> color) {
    if (tray_.symbolColor == color) return;
    tray_.symbolColor = color;
    if (icon_) icon_->setIcon(trayIcon(symbol_, tray_));
}

void QtStatusBar::showPaused(bool isPaused) {
    if (!icon_) return;
    symbol_ = isPaused ? "MenuBarIcon.paused" : "MenuBarIcon";
    icon_->setIcon(trayIcon(symbol_, tray_));
    icon_->setToolTip(isPaused ? QStringLiteral("Orvel 已暂停") : QStringLiteral("Orvel"));
}

}  // namespace orvel::qt
