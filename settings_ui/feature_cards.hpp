#pragma once

#include "app/preference_keys.hpp"

#include <array>
#include <cstdint>
#include <string_view>

namespace orvel {

enum class CardColor : std::uint8_t { purple, blue, green, orange, red };

/// sRGB, each part from 0 to 1.
struct RgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;
};

constexpr RgbColor rgbOf(CardColor color) {
    switch (color) {
        case CardColor::purple: return {0.7, 0.4, 0.8};
        case CardColor::blue: return {0.4, 0.6, 0.9};
        case CardColor::green: return {0.4, 0.7, 0.5};
        case CardColor::orange: return {0.9, 0.6, 0.4};
        case CardColor::red: return {0.9, 0.4, 0.4};
    }
    return {};
}

/// One tile of the settings panel. Its title stands in the table of settings.
struct FeatureCard {
    PreferenceKey key;
    std::string_view description;  ///< empty: a live text made from the settings
    std::string_view symbol;
    CardColor color;

    [[nodiscard]] constexpr std::string_view title() const { return preferenceInfo(key).cardTitle; }
    [[nodiscard]] constexpr bool hasLiveText() const { return description.empty(); }
};

/// In grid order, three in a row.
inline constexpr std::array<FeatureCard, kFeatureCardCount> kFeatureCards{{
    {PreferenceKey::cardModifier, "", "keyboard", CardColor::purple},
    {PreferenceKey::cardEject, "", "delete.forward", CardColor::red},
    {PreferenceKey::cardSnap, "Cmd(Win) + 方向键 半屏/最大化/最小化", "uiwindow.split.2x1",
     CardColor::blue},
    {PreferenceKey::cardFinder,
     "访达内 Enter 打开 / F2 重命名 / 完美还原文件剪切 (Ctrl+X) / 中键极客菜单", "folder",
     CardColor::orange},
    {PreferenceKey::cardSyscmd,
     "Cmd(Win) + 1~9 任务栏 / D 桌面 / E 访达 / L 锁屏 (暗藏高级截屏与搜索等特性)",
     "command.square.fill", CardColor::purple},
    {PreferenceKey::cardTab, "Option(Win) + Tab 在所有独立窗口间切换", "rectangle.stack.fill",
     CardColor::green},
    {PreferenceKey::cardFn, "Fn + 方向键 模拟 Home/End/PgUp/PgDn",
     "arrow.up.and.down.and.arrow.left.and.right", CardColor::blue},
    {PreferenceKey::cardScroll, "仅反转外接鼠标滚轮，保留触控板自然滑动", "scroll",
     CardColor::green},
    {PreferenceKey::cardShift,
     "单按 Shift 切换输入法。在系统设置中关闭「Caps Lock 切换中英」，释放后的 Caps Lock "
     "将作为纯粹的大写锁定键使用。",
     "character.cursor.ibeam", CardColor::orange},
    {PreferenceKey::cardFkeys, "Option+Esc 快速在【编程 F1-F12】与【多媒体键】间无缝切换",
     "speaker.wave.3", CardColor::red},
    {PreferenceKey::cardMouseSide, "让普通鼠标的侧键在网页和访达中完美支持前进/后退",
     "computermouse", CardColor::blue},
    {PreferenceKey::cardAltMenu, "单按 Option(Alt) 键激活顶部菜单栏，纯键盘流必备",
     "menubar.rectangle", CardColor::purple},
    {PreferenceKey::cardTaskbar,
     "在屏幕底部覆盖一条高颜值的 Windows 风格任务栏。开启时将自动隐藏 Mac "
     "原生程序坞，关闭后自动恢复。",
     "dock.rectangle", CardColor::blue},
    {PreferenceKey::cardDragDrop, "将文件直接拖入底部任务栏的图标中，即刻使用该程序打开文件。",
     "arrow.down.doc.fill", CardColor::green},
    {PreferenceKey::cardWinAdvanced,
     "Win+V 呼出剪贴板 / Win+X 极客菜单 / Ctrl+Shift+Esc 秒开活动监视器", "keyboard.badge.ellipsis",
     CardColor::orange},
}};

namespace detail {
constexpr bool cardsAreInCardOrder() {
    for (std::size_t i = 0; i < kFeatureCards.size(); ++i) {
        if (static_cast<std::size_t>(kFeatureCards[i].key) != i) return false;
    }
    return true;
}
}  // namespace detail
static_assert(detail::cardsAreInCardOrder());

/// The panel's fixed texts.
namespace panel_text {
inline constexpr std::string_view title = "Orvel";
inline constexpr std::string_view subtitle = "一键重塑指尖心流，Mac与Win习惯平滑切换。";
/// Heads the drawn keyboard.
inline constexpr std::string_view section = "核心按键映射";
inline constexpr std::string_view deleteLabel = "正向删除：";
}  // namespace panel_text

}  // namespace orvel
