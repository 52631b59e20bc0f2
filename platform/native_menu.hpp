#pragma once

#include "platform/base/geometry.hpp"
#include "platform/panels.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvel {

struct MenuItem {
    std::string title = {};  ///< empty: a separator
    bool isChecked = false;
    std::string keyEquivalent = {};  ///< empty: none
    std::string symbol = {};         ///< name of the symbol before the title; empty: none

    [[nodiscard]] bool isSeparator() const { return title.empty(); }
};

/// Where a menu pops up: in a panel, or (absent) in the status item's button.
struct MenuPlace {
    std::optional<PanelId> panel;
    LocalPoint at;
};

struct NativeMenu {
    std::string_view id;  ///< names the menu in transcripts
    std::vector<MenuItem> items = {};
    double minimumWidth = 0;  ///< points; 0: as wide as its items
};

/// Menus drawn by the desktop. Main thread.
class NativeMenus {
public:
    virtual ~NativeMenus() = default;

    /// Shows the menu; `chosen` is called with the index of the item that a person picks, and not
    /// at all when the menu is dismissed.
    virtual void popUp(NativeMenu menu, MenuPlace place,
                       std::function<void(std::size_t)> chosen) = 0;
};

}  // namespace orvel
