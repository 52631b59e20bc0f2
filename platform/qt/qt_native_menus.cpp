#include "platform/qt/qt_native_menus.hpp"

#include "platform/qt/qt_status_bar.hpp"
#include "platform/qt/quick_panel_host.hpp"
#include "platform/qt/symbol_icons.hpp"

#include <QAction>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPalette>
#include <QQuickWindow>
#include <QScreen>

#include <utility>

namespace orvel::qt {

namespace {

/// Makes the shortcuts that an open menu shows work; by itself it only shows them.
class OpenMenuShortcuts final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const QKeySequence typed(static_cast<QKeyEvent*>(event)->keyCombination());
        auto* menu = static_cast<QMenu*>(watched);
        for (QAction* action : menu->actions()) {
            if (action->shortcut() != typed || typed.isEmpty()) continue;
            menu->close();
            action->trigger();
            return true;
        }
        return false;
    }
};

void addItem(QMenu& menu, const MenuItem& item, std::function<void()> chosen) {
    if (item.isSeparator()) {
        menu.addSeparator();
        return;
    }
    QAction* action = menu.addAction(QString::fromStdString(item.title));
    if (item.isChecked) {
        action->setCheckable(true);
        action->setChecked(true);
    }
    if (!item.symbol.empty()) {
        action->setIcon(symbolIcon(item.symbol, menu.palette().color(QPalette::Text), 13));
    }
    if (!item.keyEquivalent.empty()) {
        action->setShortcut(QKeySequence("Ctrl+" + QString::fromStdString(item.keyEquivalent)));
    }
    QObject::connect(action, &QAction::triggered, &menu, std::move(chosen));
}

void fill(QMenu& menu, const NativeMenu& content, const std::function<void(std::size_t)>& chosen) {
    menu.clear();
    for (std::size_t i = 0; i < content.items.size(); ++i) {
        addItem(menu, content.items[i], [chosen, i] { chosen(i); });
    }
    if (content.minimumWidth > 0) menu.setMinimumWidth(qRound(content.minimumWidth));
}

}  // namespace

void QtNativeMenus::popUp(NativeMenu menu, MenuPlace place,
                          std::function<void(std::size_t)> chosen) {
    QMenu* exported = place.panel ? nullptr : statusBar_.exportedMenu();
    if (exported != nullptr) {
        fill(*exported, menu, chosen);
        return;
    }
    if (menu_) menu_.release()->deleteLater();  // Its own action may be calling.
    menu_ = std::make_unique<QMenu>();
    menu_->installEventFilter(new OpenMenuShortcuts(menu_.get()));
    fill(*menu_, menu, chosen);
    menu_->popup(place.panel ? pointOf(place) : besideButton(menu_->sizeHint(), place));
}

/// Trays are at the bottom of most desktops, where a menu has its room above them.
QPoint QtNativeMenus::besideButton(QSize menu, const MenuPlace& place) const {
    const QPoint below = pointOf(place);
    const QRect button = statusBar_.buttonRect();
    const QScreen* screen = QGuiApplication::screenAt(button.center());
    if (button.isEmpty() || screen == nullptr) return below;
    const bool fits = below.y() + menu.height() <= screen->geometry().bottom() + 1;
    return fits ? below : QPoint(below.x(), button.y() - menu.height());
}

QPoint QtNativeMenus::pointOf(const MenuPlace& place) const {
    if (place.panel) {
        const QQuickWindow* window = panels_.window(*place.panel);
        if (window == nullptr) return QCursor::pos();
        return window->mapToGlobal(
            QPoint(qRound(place.at.x), window->height() - qRound(place.at.y)));
    }
    const QRect button = statusBar_.buttonRect();
    if (button.isEmpty()) return QCursor::pos();
    return {button.x() + qRound(place.at.x), button.y() + button.height() - qRound(place.at.y)};
}

}  // namespace orvel::qt
