#include "platform/x11/x11_notifications.hpp"

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

#include <utility>

namespace orvel::x11 {

namespace {

class Observer final : public NotificationObserver {
public:
    explicit Observer(QMetaObject::Connection connection) : connection_(std::move(connection)) {}
    ~Observer() override { QObject::disconnect(connection_); }

private:
    QMetaObject::Connection connection_;
};

}  // namespace

std::unique_ptr<NotificationObserver> X11Notifications::observe(NotificationName name,
                                                                std::optional<PanelId> panel,
                                                                std::string_view /*owner*/,
                                                                std::function<void()> handler) {
    if (name == NotificationName::applicationDidResignActive) {
        return std::make_unique<Observer>(
            QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, qGuiApp,
                             [handler = std::move(handler)](Qt::ApplicationState state) {
                                 if (state != Qt::ApplicationActive) handler();
                             }));
    }
    return std::make_unique<Observer>(QObject::connect(
        qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp,
        [this, panel, handler = std::move(handler),
         last = QPointer<QWindow>(QGuiApplication::focusWindow())](QWindow* window) mutable {
            const auto lost = panels_.panelOf(last);
            last = window;
            if (lost && (!panel || lost == panel)) handler();
        }));
}

}  // namespace orvel::x11
