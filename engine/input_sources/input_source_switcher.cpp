#include "engine/input_sources/input_source_switcher.hpp"

#include <algorithm>

namespace orvel {

void InputSourceSwitcher::toggleInputSourceViaTIS() {
    const auto current = sources_.current();
    if (!current) return log_.line("⚠️ TIS: 无法获取当前输入法");

    const auto selectable = sources_.selectable();
    if (selectable.empty()) return log_.line("⚠️ TIS: 无法获取输入法列表");

    const auto next = std::ranges::find_if(selectable, [&](const InputSource& source) {
        return source.isKeyboard && source.id != current->id;
    });
    if (next == selectable.end())
        return log_.line("⚠️ TIS: 没有找到可切换的其他输入法");

    sources_.select(next->id);
    log_.line("🌟 TIS: 成功切换输入法 → " + next->id);
}

bool InputSourceSwitcher::isCurrentInputChinese() const {
    const auto current = sources_.current();
    return current && current->isAsciiCapable == false;
}

void InputSourceSwitcher::setCapsLockHardwareState(bool on) {
    switch (capsLock_.set(on)) {
        case CapsLockOutcome::noService:
            return log_.line("⚠️ IOKit: 无法找到 HID 系统服务");
        case CapsLockOutcome::notOpened: return log_.line("⚠️ IOKit: 无法打开 HID 连接");
        case CapsLockOutcome::done:
            return log_.line(on ? "🔤 IOKit: CapsLock 已设置为 ON (大写)"
                                : "🔤 IOKit: CapsLock 已设置为 OFF (小写)");
    }
}

}  // namespace orvel
