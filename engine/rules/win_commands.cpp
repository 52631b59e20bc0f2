#include "engine/rules/win_commands.hpp"

#include "engine/dock_apps.hpp"
#include "engine/synthesis/system_scripts.hpp"

#include <array>
#include <chrono>
#include <string>

namespace orvel::rules {

namespace {

constexpr Duration kGeekMenuDelay = std::chrono::milliseconds(150);

bool isOn(const RuleContext& context, PreferenceKey card) {
    return context.services.preferences.boolForKey(card);
}

RuleOutcome toggleClipboard(EngineServices& services) {
    services.log.line("📋 触发 Win+V：召唤我们自己手搓的剪贴板！");
    services.runLoop.post([&overlay = services.overlay] { overlay.toggleClipboardMenu(); });
    return EngineDecision::swallow();
}

RuleOutcome search(EngineServices& services) {
    services.log.line("🔍 触发 Win+S：呼出聚焦搜索 (伪装成 Cmd+Space)");
    services.keystrokes.postShortcut(key::space, flag::command);
    return EngineDecision::swallow();
}

RuleOutcome takeScreenshot(EngineServices& services) {
    services.log.line(
        "📸 触发 Win+Shift+S：绕过 macOS 截屏安全锁，直接呼出截屏工具！");
    services.runLoop.background([&tasks = services.taskRunner] {
        (void)tasks.launch("/usr/bin/open", {"-a", "Screenshot"});
    });
    return EngineDecision::swallow();
}

RuleOutcome openSettings(EngineServices& services) {
    services.log.line("⚙️ 触发 Win+I：打开 Mac 系统设置");
    services.launcher.openUrl("x-apple.systempreferences:");
    return EngineDecision::swallow();
}

RuleOutcome openHomeFolder(EngineServices& services) {
    services.launcher.revealInFileManager(services.fileSystem.homeDirectory());
    return EngineDecision::swallow();
}

RuleOutcome lockScreen(EngineServices& services) {
    services.runLoop.background(
        [&runner = services.scriptRunner] { (void)runner.run(scripts::kLockScreen); });
    return EngineDecision::swallow();
}

RuleOutcome showGeekMenu(EngineServices& services) {
    services.log.line("🛠 触发 Win+X：呼出高级极客菜单");
    services.runLoop.postAfter(kGeekMenuDelay,
                               [&overlay = services.overlay] { overlay.showGeekMenu(); });
    return EngineDecision::swallow();
}

void openApplication(EngineServices& services, std::string_view bundleId) {
    const auto path = services.workspace.applicationPath(bundleId);
    if (path) services.launcher.openApplication(*path, std::nullopt);
}

RuleOutcome openActivityMonitor(EngineServices& services) {
    services.log.line("🚀 触发 Ctrl+Shift+Esc：秒开活动监视器！");
    openApplication(services, "com.apple.ActivityMonitor");
    return EngineDecision::swallow();
}

RuleOutcome systemCommand(RuleContext& context) {
    switch (context.incoming.keyCode) {
        case key::s: return search(context.services);
        case key::i: return openSettings(context.services);
        case key::e: return openHomeFolder(context.services);
        case key::l: return lockScreen(context.services);
        case key::d:
            // The desktop shows on release: while Win is held the system would see a shortcut.
            context.state.pendingShowDesktop = true;
            return EngineDecision::swallow();
        default: return std::nullopt;
    }
}

RuleOutcome winLetter(RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    if (context.isShiftHeld()) {
        const bool isScreenshot = code == key::s && isOn(context, PreferenceKey::cardSyscmd);
        return isScreenshot ? takeScreenshot(context.services) : std::nullopt;
    }
    if (code == key::v && isOn(context, PreferenceKey::cardWinAdvanced)) {
        return toggleClipboard(context.services);
    }
    if (code == key::x) return showGeekMenu(context.services);
    return isOn(context, PreferenceKey::cardSyscmd) ? systemCommand(context) : std::nullopt;
}

bool isTaskManagerChord(const RuleContext& context) {
    return context.incoming.keyCode == key::escape && context.isShiftHeld() &&
           holdsAny(context.logicalFlags, flag::command | flag::control) &&
           !holds(context.logicalFlags, flag::option);
}

constexpr std::array kDigitKeys{key::digit1, key::digit2, key::digit3, key::digit4, key::digit5,
                                key::digit6, key::digit7, key::digit8, key::digit9};

/// The digit of a key from 1 to 9, 0 for every other key.
std::size_t digitOf(KeyCode code) {
    for (std::size_t i = 0; i < kDigitKeys.size(); ++i) {
        if (kDigitKeys[i] == code) return i + 1;
    }
    return 0;
}

std::optional<std::string> applicationAt(std::size_t place, const RuleContext& context) {
    if (!isOn(context, PreferenceKey::cardTaskbar)) {
        return dockApplication(context.services.fileSystem, place - 1);
    }
    const auto ids = context.services.overlay.currentTaskbarAppIds();
    if (place > ids.size()) return std::nullopt;
    return ids[place - 1];
}

}  // namespace

RuleOutcome winCommands(RuleContext& context) {
    if (isTaskManagerChord(context)) return openActivityMonitor(context.services);
    return context.isWinHeld() ? winLetter(context) : std::nullopt;
}

RuleOutcome winDigits(RuleContext& context) {
    const std::size_t digit = digitOf(context.incoming.keyCode);
    if (digit == 0 || !context.isWinHeld() || context.isShiftHeld()) return std::nullopt;
    const std::string number = std::to_string(digit);
    const auto bundleId = applicationAt(digit, context);
    if (!bundleId) {
        context.services.log.line("⚠️ 找不到第 " + number + " 个任务栏应用");
        return EngineDecision::swallow();
    }
    context.services.log.line("🚀 触发 Win+" + number + "：启动任务栏第 " + number + " 个应用");
    openApplication(context.services, *bundleId);
    return EngineDecision::swallow();
}

}  // namespace orvel::rules
