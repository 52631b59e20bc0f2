#pragma once

#include "engine/clipboard_commands.hpp"
#include "engine/finder_menu_commands.hpp"
#include "engine/overlay_commands.hpp"

namespace orvel {

/// Stands where no desktop overlay is built: nothing shows and nothing happens.
class AbsentOverlay final : public OverlayCommands {
public:
    [[nodiscard]] bool isClipboardShowing() const override { return false; }
    [[nodiscard]] bool isStartMenuShowing() const override { return false; }
    void toggleClipboardMenu() override {}
    void toggleStartMenu() override {}
    void showGeekMenu() override {}
    [[nodiscard]] std::vector<std::string> currentTaskbarAppIds() const override { return {}; }
};

/// Stands where no clipboard history is built.
class AbsentClipboard final : public ClipboardCommands {
public:
    void moveSelection(bool) override {}
    void pasteSelected() override {}
};

/// Stands where no Finder menu is built.
class AbsentFinderMenu final : public FinderMenuCommands {
public:
    void showMenu(ScreenPoint, const std::vector<std::string>&, const std::string&) override {}
};

}  // namespace orvel
