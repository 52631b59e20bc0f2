#pragma once

#include "platform/notifications.hpp"
#include "platform/qt/quick_panel_host.hpp"

#include <QObject>

namespace orvel::x11 {

/// The program's own notifications, from what Qt tells about focus.
class X11Notifications final : public Notifications {
public:
    explicit X11Notifications(qt::QuickPanelHost& panels) : panels_(panels) {}

    [[nodiscard]] std::unique_ptr<NotificationObserver> observe(
        NotificationName name, std::optional<PanelId> panel, std::string_view owner,
        std::function<void()> handler) override;

private:
    qt::QuickPanelHost& panels_;
};

}  // namespace orvel::x11
