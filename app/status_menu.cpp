#include "app/status_menu.hpp"

namespace orvel {

std::vector<StatusMenuRow> statusMenuRows(bool launchesAtLogin) {
    const StatusMenuRow separator{};
    return {
        {{.title = "开机自启", .isChecked = launchesAtLogin},
         StatusMenuAction::toggleLaunchAtLogin},
        separator,
        {{.title = "访问官网"}, StatusMenuAction::openWebsite},
        separator,
        {{.title = "退出程序", .keyEquivalent = "q"}, StatusMenuAction::quit},
    };
}

}  // namespace orvel
