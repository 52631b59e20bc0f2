#pragma once

#include "platform/native_menu.hpp"

#include <QMenu>

#include <functional>
#include <memory>

namespace orvel::qt {

class QtStatusBar;
class QuickPanelHost;

/// Menus drawn by Qt. Needs a QApplication.
class QtNativeMenus final : public NativeMenus {
public:
    QtNativeMenus(QuickPanelHost& panels, QtStatusBar& statusBar)
        : panels_(panels), statusBar_(statusBar) {}

    void popUp(NativeMenu menu, MenuPlace place, std::function<void(std::size_t)> chosen) override;

private:
    [[nodiscard]] QPoint pointOf(const MenuPlace& place) const;
    [[nodiscard]] QPoint besideButton(QSize menu, const MenuPlace& place) const;

    QuickPanelHost& panels_;
    QtStatusBar& statusBar_;
    std::unique_ptr<QMenu> menu_;
};

}  // namespace orvel::qt
