#include "engine/tap_watchdog.hpp"

#include <chrono>

namespace orvel {

TapWatchdog::TapWatchdog(EventTap& tap, Log& log, RunLoop& runLoop)
    : tap_(tap),
      log_(log),
      timer_(runLoop.every(std::chrono::seconds(2), "engine", [this] { tick(); })) {}

void TapWatchdog::tick() {
    if (!tap_.exists() || tap_.isEnabled()) return;
    log_.line("🚨 心跳守护发现 Event Tap 被系统偷偷禁用了！正在紧急满血复活...");
    tap_.enable();
    log_.line("✅ Event Tap 已成功复活！Orvel引擎恢复运转！");
}

}  // namespace orvel
