#pragma once

#include "platform/essentials.hpp"

#include <cstddef>
#include <string_view>

namespace orvel {

/// What the panel says of something essential.
struct EssentialText {
    std::string_view name;
    std::string_view symbol;
    std::string_view stops;        ///< what does not work without it
    std::string_view remedy;       ///< what to do
    std::string_view settingsUrl;  ///< where to do it; empty: nowhere that we could open
};

constexpr EssentialText textOf(Essential essential) {
    switch (essential) {
        case Essential::accessibilityPermission:
            return {"辅助功能权限", "lock", "没有它，Orvel 收不到按键，也移动不了窗口。",
                    "打开「系统设置 → 隐私与安全性 → 辅助功能」，勾选 orvelkit。",
                    "x-apple.systempreferences:com.apple.preference.security?"
                    "Privacy_Accessibility"};
        case Essential::effectivePermission:
            return {"权限生效", "lock", "权限已勾选，但系统没有让它生效，按键仍然收不到。",
                    "在「辅助功能」列表中选中 orvelkit，点「-」删除，再重新勾选。",
                    "x-apple.systempreferences:com.apple.preference.security?"
                    "Privacy_Accessibility"};
        case Essential::keyboard:
            return {"键盘", "keyboard", "没有接入键盘，所有按键功能都停着。",
                    "接上一个键盘即可，立即生效，无需重启。", ""};
        case Essential::keyboardControl:
            return {"键盘控制权", "lock", "另一个程序正独占键盘，Orvel 收不到按键。",
                    "退出那个程序（例如别的改键工具），再点「重试」。", ""};
    }
    return {};
}

/// The fixed texts of the page.
namespace onboarding_text {
constexpr std::string_view titleFor(std::ptrdiff_t missing) {
    return missing == 1 ? "还差一步" : missing == 2 ? "还差两步" : "还差几步";
}
inline constexpr std::string_view subtitle = "下面这些具备之后，Orvel 会自动开始工作。";
inline constexpr std::string_view readyTitle = "准备就绪";
inline constexpr std::string_view readySubtitle = "都齐了，马上进入设置。";
inline constexpr std::string_view there = "已具备";
inline constexpr std::string_view retry = "重试";
inline constexpr std::string_view later = "先看看设置";
inline constexpr std::string_view openSettings = "打开系统设置";
}  // namespace onboarding_text

}  // namespace orvel
