#pragma once

#include "app/resident_services.hpp"
#include "engine/clipboard_commands.hpp"
#include "engine/finder_menu_commands.hpp"
#include "engine/overlay_commands.hpp"
#include "settings_ui/taskbar_switch.hpp"

namespace orvel {

/// Stands where no desktop overlay is built: nothing shows and nothing happens.
class AbsentOverlay final : public OverlayCommands, public OverlayLaunch, public TaskbarSwitch {
public:
    [[nodiscard]] bool isClipboardShowing() const override { return false; }
    [[nodiscard]] bool isStartMenuShowing() const override { return false; }
    void toggleClipboardMenu() override {}
    void toggleStartMenu() override {}
    void showGeekMenu() override {}
    [[nodiscard]] std::vector<std::string> currentTaskbarAppIds() const override { return {}; }
    void showTaskbar() override {}
    void toggleNativeDockAutoHide(bool) override {}
    void setTaskbarEnabled(bool) override {}
};

/// Stands where no clipboard history is built.
class AbsentClipboard final : public ClipboardCommands, public ClipboardLaunch {
public:
    void moveSelection(bool) override {}
    void pasteSelected() override {}
    void startListening() override {}
};

/// Stands where no Finder menu is built.
class AbsentFinderMenu final : public FinderMenuCommands {
public:
    void showMenu(ScreenPoint, const std::vector<std::string>&, const std::string&) override {}
};

/// Stands where no window pictures are taken.
class AbsentWindowPictures final : public WindowPictureLaunch {
public:
    void startActiveWindowCache() override {}
};

}  // namespace orvel
