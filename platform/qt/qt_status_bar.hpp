#pragma once

#include "platform/qt/tray_icon.hpp"
#include "platform/status_bar.hpp"

#include <QMenu>
#include <QPoint>
#include <QRect>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>
#include <string>

namespace orvel::qt {

/// The status item as an icon in the desktop's tray. Needs a QApplication.
class QtStatusBar final : public StatusBar {
public:
    QtStatusBar();
    ~QtStatusBar() override;

    void createItem(const StatusItemSpec& spec,
                    std::function<void(const StatusItemClick&)> clicked) override;
    /// Where the tray does not say, the pointer at the last click; without a tray, the corner.
    [[nodiscard]] std::optional<ScreenRect> buttonFrame() const override;
    void showPaused(bool isPaused) override;

    /// The same in Qt's coordinates; empty while the tray does not say.
    [[nodiscard]] QRect buttonRect() const;
    /// The colour that symbols have in the tray; absent where it does not say.
    void setSymbolColor(std::optional<QColor> color);
    /// The menu that the tray itself draws; null where right clicks reach us instead.
    [[nodiscard]] QMenu* exportedMenu();

private:
    void activated(QSystemTrayIcon::ActivationReason reason);
    void exportMenu();

    TraySurroundings tray_;
    std::string symbol_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::unique_ptr<QMenu> exportedMenu_;
    std::function<void(const StatusItemClick&)> clicked_;
    std::optional<QPoint> lastClick_;
};

}  // namespace orvel::qt
