#include "engine/orvel_engine.hpp"

#include "engine/event_callback.hpp"
#include "engine/synthesis/system_scripts.hpp"

namespace orvel {

namespace {

// Left and right clicks and pointer movement stay out: they are never looked at.
constexpr EventMask kTappedEvents =
    maskOf(EventType::keyDown) | maskOf(EventType::keyUp) | maskOf(EventType::flagsChanged) |
    maskOf(EventType::systemDefined) | maskOf(EventType::scrollWheel) |
    maskOf(EventType::otherMouseDown) | maskOf(EventType::otherMouseUp);
static_assert(kTappedEvents == 0x6405C00);

}  // namespace

OrvelEngine::OrvelEngine(const Ports& ports, const Commands& commands, Preferences& preferences)
    : ports_(ports),
      keystrokes_(ports.eventPoster),
      mediaKeys_(ports.eventPoster),
      inputSources_(ports.inputSources, ports.capsLock, ports.log),
      snapper_({ports.windows, ports.workspace, ports.screens, ports.log}, preferences, state_),
      services_{.preferences = preferences,
                .log = ports.log,
                .runLoop = ports.runLoop,
                .inputState = ports.inputState,
                .workspace = ports.workspace,
                .launcher = ports.launcher,
                .scriptRunner = ports.scriptRunner,
                .taskRunner = ports.taskRunner,
                .fileSystem = ports.fileSystem,
                .haptics = ports.haptics,
                .keystrokes = keystrokes_,
                .mediaKeys = mediaKeys_,
                .inputSources = inputSources_,
                .snapper = snapper_,
                .overlay = commands.overlay,
                .clipboard = commands.clipboard,
                .finderMenu = commands.finderMenu} {}

void OrvelEngine::start() {
    if (ports_.eventTap.exists()) return;
    queueAutomationPrecheck();
    if (!ports_.permission.isTrustedOrPrompt()) {
        ports_.log.line(
            "⚠️ 请在系统设置 -> 隐私与安全性 -> 辅助功能 中打勾允许！");
        return;
    }
    if (!installTap()) {
        ports_.log.line("🚨 致命错误：EventTap 创建失败！系统辅助功能权限未生效！");
        ports_.log.line(
            "👉 解决指引：请去系统设置 -> 隐私与安全性 -> 辅助功能，选中 orvelkit 点击 '-' "
            "减号彻底删除！然后重新运行本程序，再重新打勾！");
        return;
    }
    watchdog_.emplace(ports_.eventTap, ports_.log, ports_.runLoop);
    ports_.log.line("✅ Orvel引擎启动成功，开启纯粹的 Windows 键位体验！");
}

void OrvelEngine::queueAutomationPrecheck() {
    ports_.runLoop.post([this] {
        ports_.appControl.activateSelf();
        const auto version = ports_.scriptRunner.run(scripts::kFinderVersion);
        ports_.log.line(version
                            ? "🟢 权限预检通过！已获得 Finder 控制权！"
                            : "🛡️ 权限预检被拦截，等待用户点击授权弹窗: " +
                                  version.error());
    });
}

bool OrvelEngine::installTap() {
    const EventTapRequest request{.mask = kTappedEvents};
    if (!ports_.eventTap.create(request, [this](Event& event) { return handle(event); })) {
        return false;
    }
    ports_.eventTap.enable();
    return true;
}

EventVerdict OrvelEngine::handle(Event& event) {
    const EngineDecision decision = orvelEventCallback(event, state_, services_);
    switch (decision.kind()) {
        case EngineDecision::Kind::pass: return EventVerdict::pass;
        case EngineDecision::Kind::swallow: return EventVerdict::swallow;
        case EngineDecision::Kind::modify: break;
    }
    event = decision.event();
    return EventVerdict::modify;
}

void OrvelEngine::setWindowsModeEnabled(bool isEnabled) {
    state_.isWindowsModeEnabled.set(isEnabled);
    ports_.log.line(isEnabled ? "Windows 模式状态切换为: true" : "Windows 模式状态切换为: false");
}

void OrvelEngine::postKeystroke(KeyCode keyCode, EventFlags modifier) {
    keystrokes_.postKeystroke(keyCode, modifier);
}

void OrvelEngine::postMediaKey(MediaKeyType keyType) { mediaKeys_.postMediaKey(keyType); }

void OrvelEngine::toggleInputSourceViaTIS() { inputSources_.toggleInputSourceViaTIS(); }

bool OrvelEngine::isCurrentInputChinese() const { return inputSources_.isCurrentInputChinese(); }

void OrvelEngine::setCapsLockHardwareState(bool on) { inputSources_.setCapsLockHardwareState(on); }

void OrvelEngine::snapActiveWindow(SnapDirection direction) {
    snapper_.snapActiveWindow(direction);
}

}  // namespace orvel
