#include "engine/rules/input_source_keys.hpp"

#include <chrono>
#include <utility>

namespace orvel::rules {

namespace {

constexpr Duration kSingleTapWindow = std::chrono::milliseconds(500);

void finishShiftTap(RuleContext& context) {
    context.services.log.line("🚀 触发单按 Shift：调用 TIS API 直接切换输入法！");
    context.services.inputSources.toggleInputSourceViaTIS();
    if (!holds(context.services.inputState.hidFlags(), flag::capsLock)) return;
    context.services.inputSources.setCapsLockHardwareState(false);
    context.state.didEnterEnglishViaCapsLock = false;
}

void onShiftUp(RuleContext& context) {
    EngineState& state = context.state;
    const auto pressed = std::exchange(state.lastShiftPressTime, std::nullopt);
    const bool isTap = pressed && !state.hasPressedOtherKeySinceShift &&
                       context.services.runLoop.now() - *pressed < kSingleTapWindow;
    if (isTap) finishShiftTap(context);
}

}  // namespace

RuleOutcome capsLockInputSource(RuleContext& context) {
    if (context.incoming.keyCode != key::capsLock) return std::nullopt;
    InputSourceSwitcher& sources = context.services.inputSources;
    bool& didEnterEnglish = context.state.didEnterEnglishViaCapsLock;

    const bool turnedOn = holds(context.incoming.flags, flag::capsLock);
    const bool switches = turnedOn ? sources.isCurrentInputChinese() : didEnterEnglish;
    if (!switches) return std::nullopt;
    sources.toggleInputSourceViaTIS();
    sources.setCapsLockHardwareState(turnedOn);
    didEnterEnglish = turnedOn;
    return std::nullopt;
}

RuleOutcome singleShiftInputSource(RuleContext& context) {
    const Event& event = context.incoming;
    if (event.keyCode != key::leftShift && event.keyCode != key::rightShift) return std::nullopt;
    if (!holds(event.flags, flag::shift)) {
        onShiftUp(context);
    } else if (!holdsAny(event.flags, flag::command | flag::control | flag::option)) {
        context.state.lastShiftPressTime = context.services.runLoop.now();
        context.state.hasPressedOtherKeySinceShift = false;
    }
    return std::nullopt;
}

}  // namespace orvel::rules
