#include "engine/rules/mouse_buttons.hpp"

#include "engine/finder_folder.hpp"
#include "engine/synthesis/system_scripts.hpp"

namespace orvel::rules {

namespace {

constexpr std::int64_t kMiddleButton = 2;
constexpr std::int64_t kBackButton = 3;
constexpr std::int64_t kForwardButton = 4;

/// Asks the file manager for its folder in a child process, so that it can hang without us.
void openFinderMenu(EngineServices& services, ScreenPoint pointer) {
    const auto output = services.taskRunner.run("/usr/bin/osascript",
                                                {"-e", std::string(scripts::kFrontFinderFolder)});
    if (!output) return services.log.line("❌ 子进程突围失败: " + output.error());
    services.runLoop.post(
        [&menu = services.finderMenu, pointer, folder = finderFolder(output.value())] {
            menu.showMenu(pointer, folder.labels, folder.path);
        });
}

}  // namespace

RuleOutcome middleClickInFinder(RuleContext& context) {
    if (context.incoming.buttonNumber != kMiddleButton || !context.isFinderInFront()) {
        return std::nullopt;
    }
    EngineServices& services = context.services;
    services.log.line("🎯 在访达中捕获到鼠标中键！准备召唤超级菜单...");
    const ScreenPoint pointer = services.inputState.pointerLocation();
    services.runLoop.background([&services, pointer] { openFinderMenu(services, pointer); });
    return EngineDecision::swallow();
}

RuleOutcome sideButtons(RuleContext& context) {
    const std::int64_t button = context.incoming.buttonNumber;
    if (button != kBackButton && button != kForwardButton) return std::nullopt;
    if (context.incoming.type == EventType::otherMouseUp) return EngineDecision::swallow();

    const bool goesBack = button == kBackButton;
    context.services.log.line(goesBack ? "🔙 触发鼠标侧键后退：伪装成 Cmd + ["
                                       : "🔜 触发鼠标侧键前进：伪装成 Cmd + ]");
    context.services.keystrokes.postKeystroke(goesBack ? key::leftBracket : key::rightBracket,
                                              flag::command);
    return EngineDecision::swallow();
}

}  // namespace orvel::rules
