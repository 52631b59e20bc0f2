#include "app/dock_restorer.hpp"

#include "overlay/system_scripts.hpp"
#include "platform/log.hpp"
#include "platform/run_loop.hpp"
#include "platform/script_runner.hpp"

#include <string>
#include <string_view>

namespace orvel {

namespace {

constexpr std::string_view kShowDock =
    "tell application \"System Events\" to set autohide of dock preferences to false";

}  // namespace

DockRestorer::DockRestorer(ScriptRunner& scripts, RunLoop& runLoop, Log& log)
    : scripts_(scripts), runLoop_(runLoop), log_(log) {}

void DockRestorer::repairAtStart() {
    log_.line("🛡️ 启动自检：Windows 任务栏未开启，执行恢复原生 Dock");
    runLoop_.background([&scripts = scripts_] { static_cast<void>(scripts.run(kShowDock)); });
}

void DockRestorer::restoreAtExit() {
    log_.line("🔄 正在恢复 Mac 原生程序坞...");
    const auto shown = scripts_.run(kShowDock);
    log_.line(shown ? "✅ 成功恢复 Mac 原生程序坞！"
                    : "⚠️ 退出时恢复原生程序坞失败: " + shown.error());
    // The reveal delay that the taskbar set would stay behind otherwise.
    static_cast<void>(scripts_.run(overlay_script::restoreDock));
}

}  // namespace orvel
