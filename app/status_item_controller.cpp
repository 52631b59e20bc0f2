#include "app/status_item_controller.hpp"

#include "app/login_item.hpp"
#include "platform/app_control.hpp"
#include "platform/launcher.hpp"
#include "platform/native_menu.hpp"

#include <string_view>
#include <utility>
#include <vector>

namespace orvel {

namespace {

/// The product's page; the build sets it.
constexpr std::string_view kWebsite = ORVEL_WEBSITE;

bool opensMenu(const StatusItemClick& click) {
    return click.button == StatusItemButton::right || holds(click.flags, flag::control);
}

}  // namespace

StatusItemController::StatusItemController(StatusItemPorts ports, SettingsPanel& panel,
                                           LoginItem& loginItem,
                                           const Published<bool>& isEnginePaused)
    : ports_(ports), panel_(panel), loginItem_(loginItem), isEnginePaused_(isEnginePaused) {}

void StatusItemController::setupStatusBar() {
    if (std::exchange(hasItem_, true)) return;
    ports_.statusBar.createItem({.length = -1,
                                 .image = "MenuBarIcon",
                                 .imageSize = 18,
                                 .fallbackSymbol = "keyboard.macwindow",
                                 .fallbackDescription = "Orvel System"},
                                [this](const StatusItemClick& click) { clickArrived(click); });
    const auto show = [this](bool isPaused) { ports_.statusBar.showPaused(isPaused); };
    show(isEnginePaused_);
    pauseShown_ = isEnginePaused_.subscribe(show);
}

void StatusItemController::clickArrived(const StatusItemClick& click) {
    // The press of this very click already closed the panel; its release must not open it again.
    if (!opensMenu(click) && panel_.wasJustClosedByPress()) return;
    handleStatusItemClick(click);
}

void StatusItemController::handleStatusItemClick(const StatusItemClick& click) {
    if (opensMenu(click)) {
        showContextMenu();
    } else {
        panel_.toggle();
    }
}

void StatusItemController::showContextMenu() {
    auto rows = statusMenuRows(loginItem_.isEnabled());
    NativeMenu menu{.id = "statusItem", .items = {}};
    for (const StatusMenuRow& row : rows) menu.items.push_back(row.item);
    ports_.nativeMenus.popUp(std::move(menu), {.panel = std::nullopt, .at = {0, 0}},
                             [this, rows = std::move(rows)](std::size_t index) {
                                 if (const auto action = rows.at(index).action) perform(*action);
                             });
}

void StatusItemController::perform(StatusMenuAction action) {
    switch (action) {
        case StatusMenuAction::toggleLaunchAtLogin: loginItem_.toggle(); break;
        case StatusMenuAction::openWebsite: ports_.launcher.openUrl(kWebsite); break;
        case StatusMenuAction::quit: ports_.appControl.terminate(); break;
    }
}

}  // namespace orvel
