#pragma once

#include "app/settings_panel.hpp"
#include "app/status_menu.hpp"
#include "platform/base/published.hpp"
#include "platform/status_bar.hpp"

namespace orvel {

class AppControl;
class Launcher;
class LoginItem;
class NativeMenus;

/// What the status item needs of the desktop.
struct StatusItemPorts {
    StatusBar& statusBar;
    NativeMenus& nativeMenus;
    Launcher& launcher;
    AppControl& appControl;
};

/// The program's item in the status bar: a plain click shows or hides the settings panel, a right
/// or Control click opens the menu. It tells when the engine is paused.
class StatusItemController {
public:
    StatusItemController(StatusItemPorts ports, SettingsPanel& panel, LoginItem& loginItem,
                         const Published<bool>& isEnginePaused);

    /// Creates the item, once.
    void setupStatusBar();
    void handleStatusItemClick(const StatusItemClick& click);

private:
    void clickArrived(const StatusItemClick& click);
    void showContextMenu();
    void perform(StatusMenuAction action);

    StatusItemPorts ports_;
    SettingsPanel& panel_;
    LoginItem& loginItem_;
    const Published<bool>& isEnginePaused_;
    Subscription pauseShown_;
    bool hasItem_ = false;
};

}  // namespace orvel
