#pragma once

#include "platform/native_menu.hpp"

#include <optional>
#include <vector>

namespace orvel {

enum class StatusMenuAction { toggleLaunchAtLogin, openWebsite, quit };

/// One row of the status item's menu; a separator has no action.
struct StatusMenuRow {
    MenuItem item;
    std::optional<StatusMenuAction> action;
};

std::vector<StatusMenuRow> statusMenuRows(bool launchesAtLogin);

}  // namespace orvel
