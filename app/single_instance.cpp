#include "app/single_instance.hpp"

#include "platform/app_control.hpp"
#include "platform/log.hpp"
#include "platform/workspace.hpp"

#include <algorithm>

namespace orvel {

SingleInstance::SingleInstance(AppControl& appControl, Workspace& workspace, Log& log)
    : appControl_(appControl), workspace_(workspace), log_(log) {}

bool SingleInstance::yieldsToRunningCopy() {
    const auto instances = appControl_.runningInstances();
    if (instances.size() < 2) return false;
    log_.line("⚠️ 检测到程序已在运行，自动退出重复启动的实例。");
    const auto other = std::ranges::find_if(
        instances, [own = appControl_.ownPid()](ProcessId pid) { return pid != own; });
    if (other != instances.end()) workspace_.activate(*other, kActivateIgnoringOtherApps);
    appControl_.terminate();
    return true;
}

}  // namespace orvel
