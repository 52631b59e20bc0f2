#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orvel {

/// Every stored setting; the feature switches first, in card order.
enum class PreferenceKey : std::uint8_t {
    cardModifier,
    cardEject,
    cardSnap,
    cardFinder,
    cardSyscmd,
    cardTab,
    cardFn,
    cardScroll,
    cardShift,
    cardFkeys,
    cardMouseSide,
    cardAltMenu,
    cardTaskbar,
    cardDragDrop,
    cardWinAdvanced,
    mapCtrl,
    mapOption,
    mapCmd,
    mapRightCmd,
    mapRightOption,
    deleteStrategy,
    deleteComboMod,
    deleteSingleKey,
    launchAtLogin,
    initialToolTipDelay,
    hasWipedOldData,
    pinnedApps,
    clipboardHistory,
};

enum class PreferenceType : std::uint8_t { boolean, integer, string, stringList, data };

/// One row of the table of settings.
struct PreferenceInfo {
    PreferenceKey key;
    std::string_view name;  ///< as stored
    PreferenceType type;
    /// What a view shows while the key is absent. Nothing is registered with the store, so a
    /// reader that asks the store itself gets false or nothing.
    bool defaultFlag = false;
    std::string_view defaultText = {};
    std::string_view cardTitle = {};
};

inline constexpr std::string_view kUnmappedKey = "原按键";

// One row per key.
// clang-format off
inline constexpr std::array kPreferenceTable{
    PreferenceInfo{PreferenceKey::cardModifier, "card_modifier", PreferenceType::boolean, false, {},
                   "核心修饰键映射"},
    PreferenceInfo{PreferenceKey::cardEject, "card_eject", PreferenceType::boolean, false, {},
                   "正向删除功能"},
    PreferenceInfo{PreferenceKey::cardSnap, "card_snap", PreferenceType::boolean, false, {},
                   "窗口磁吸管理"},
    PreferenceInfo{PreferenceKey::cardFinder, "card_finder", PreferenceType::boolean, false, {},
                   "资源管理器增强"},
    PreferenceInfo{PreferenceKey::cardSyscmd, "card_syscmd", PreferenceType::boolean, false, {},
                   "Win 组合指令"},
    PreferenceInfo{PreferenceKey::cardTab, "card_tab", PreferenceType::boolean, false, {},
                   "真·窗口切换器"},
    PreferenceInfo{PreferenceKey::cardFn, "card_fn", PreferenceType::boolean, false, {},
                   "Fn 导航增强"},
    PreferenceInfo{PreferenceKey::cardScroll, "card_scroll", PreferenceType::boolean, false, {},
                   "鼠标滚轮解绑"},
    PreferenceInfo{PreferenceKey::cardShift, "card_shift", PreferenceType::boolean, false, {},
                   "单按 Shift 切换"},
    PreferenceInfo{PreferenceKey::cardFkeys, "card_fkeys", PreferenceType::boolean, true, {},
                   "F区形态切换"},
    PreferenceInfo{PreferenceKey::cardMouseSide, "cardMouseSide", PreferenceType::boolean, true, {},
                   "全局鼠标侧键修复"},
    PreferenceInfo{PreferenceKey::cardAltMenu, "cardAltMenu", PreferenceType::boolean, true, {},
                   "单按 Alt 激活"},
    PreferenceInfo{PreferenceKey::cardTaskbar, "card_taskbar", PreferenceType::boolean, false, {},
                   "沉浸式 Windows"},
    PreferenceInfo{PreferenceKey::cardDragDrop, "card_drag_drop", PreferenceType::boolean, true, {},
                   "任务栏文件拖拽"},
    PreferenceInfo{PreferenceKey::cardWinAdvanced, "card_win_advanced", PreferenceType::boolean,
                   false, {}, "高阶快捷操作"},
    PreferenceInfo{PreferenceKey::mapCtrl, "map_ctrl", PreferenceType::string, false, kUnmappedKey},
    PreferenceInfo{PreferenceKey::mapOption, "map_option", PreferenceType::string, false,
                   kUnmappedKey},
    PreferenceInfo{PreferenceKey::mapCmd, "map_cmd", PreferenceType::string, false, kUnmappedKey},
    PreferenceInfo{PreferenceKey::mapRightCmd, "map_right_cmd", PreferenceType::string, false,
                   kUnmappedKey},
    PreferenceInfo{PreferenceKey::mapRightOption, "map_right_option", PreferenceType::string, false,
                   kUnmappedKey},
    PreferenceInfo{PreferenceKey::deleteStrategy, "delete_strategy", PreferenceType::string, false,
                   "组合键"},
    PreferenceInfo{PreferenceKey::deleteComboMod, "delete_combo_mod", PreferenceType::string, false,
                   "Shift"},
    PreferenceInfo{PreferenceKey::deleteSingleKey, "delete_single_key", PreferenceType::string,
                   false, "F12"},
    PreferenceInfo{PreferenceKey::launchAtLogin, "launch_at_login", PreferenceType::boolean},
    PreferenceInfo{PreferenceKey::initialToolTipDelay, "NSInitialToolTipDelay",
                   PreferenceType::integer},
    PreferenceInfo{PreferenceKey::hasWipedOldData, "has_wiped_old_data_v3",
                   PreferenceType::boolean},
    PreferenceInfo{PreferenceKey::pinnedApps, "orvel_pinned_apps", PreferenceType::stringList},
    PreferenceInfo{PreferenceKey::clipboardHistory, "orvel_clipboard_history_v2",
                   PreferenceType::data},
};
// clang-format on

inline constexpr std::size_t kPreferenceCount = kPreferenceTable.size();
inline constexpr std::size_t kFeatureCardCount = 15;

constexpr const PreferenceInfo& preferenceInfo(PreferenceKey key) {
    return kPreferenceTable[static_cast<std::size_t>(key)];
}

/// The row of a stored name, null when the system has no such setting.
constexpr const PreferenceInfo* findPreference(std::string_view name) {
    for (const PreferenceInfo& info : kPreferenceTable) {
        if (info.name == name) return &info;
    }
    return nullptr;
}

namespace detail {
constexpr bool preferenceTableIsOrdered() {
    for (std::size_t i = 0; i < kPreferenceTable.size(); ++i) {
        if (static_cast<std::size_t>(kPreferenceTable[i].key) != i) return false;
    }
    return true;
}
}  // namespace detail
static_assert(detail::preferenceTableIsOrdered());

}  // namespace orvel
