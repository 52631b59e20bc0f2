#include "app/replay/query_table.hpp"

#include <array>

namespace orvel::replay {

namespace {

void writeRemaps(JsonWriter& out, const EngineState& state) {
    out.key("activeRemaps").beginObject();
    for (const auto& [keyCode, target] : state.activeRemaps) {
        out.key(std::to_string(keyCode));
        out.beginArray().value(target.keyCode).value(target.flags).endArray();
    }
    out.endObject();
}

void writeSwallowedKeys(JsonWriter& out, const EngineState& state) {
    out.key("swallowedKeys").beginArray();
    for (const KeyCode keyCode : state.swallowedKeys) out.value(keyCode);
    out.endArray();
}

void writeShiftPress(JsonWriter& out, const EngineState& state) {
    out.key("lastShiftPressTime");
    if (!state.lastShiftPressTime) {
        out.null();
        return;
    }
    out.value(static_cast<double>(state.lastShiftPressTime->count()) / 1e6);
}

std::string_view nameOf(WindowSnapState state) {
    constexpr std::array<std::string_view, 4> names{"left", "right", "maximized", "unsnapped"};
    return names[static_cast<std::size_t>(state)];
}

void writeSnaps(JsonWriter& out, const EngineState& state) {
    out.key("windowStates").beginObject();
    for (const auto& [window, snap] : state.windowStates) out.member(window, nameOf(snap));
    out.endObject();
    out.key("windowOriginalFrames").beginObject();
    for (const auto& [window, frame] : state.windowOriginalFrames) {
        out.key(window).beginArray().value(frame.x).value(frame.y);
        out.value(frame.width).value(frame.height).endArray();
    }
    out.endObject();
}

std::string_view nameOf(const EventTap& tap) {
    if (!tap.exists()) return "none";
    return tap.isEnabled() ? "enabled" : "disabled";
}

}  // namespace

void writeEngineState(ReplaySession& session, JsonWriter& out) {
    const OrvelEngine& engine = session.application().engine();
    const EngineState& state = engine.state();
    out.beginObject()
        .member("isWindowsModeEnabled", state.isWindowsModeEnabled.get())
        .member("fnSacrificeState", state.fnSacrificeState);
    writeRemaps(out, state);
    writeSwallowedKeys(out, state);
    out.member("pendingFinderCut", state.pendingFinderCut)
        .member("isMouseSideButtonEnabled", state.isMouseSideButtonEnabled)
        .member("isAltMenuEnabled", state.isAltMenuEnabled)
        .member("isOptionKeyDown", state.isOptionKeyDown)
        .member("hasPressedOtherKeySinceOption", state.hasPressedOtherKeySinceOption)
        .member("isPaused", state.isPaused.get());
    writeShiftPress(out, state);
    out.member("hasPressedOtherKeySinceShift", state.hasPressedOtherKeySinceShift)
        .member("didEnterEnglishViaCapsLock", state.didEnterEnglishViaCapsLock)
        .member("isDesktopShown", state.isDesktopShown)
        .member("pendingShowDesktop", state.pendingShowDesktop)
        .member("isFakingAppSwitcher", state.isFakingAppSwitcher)
        .member("isWinKeyStandaloneDown", state.isWinKeyStandaloneDown)
        .member("hasPressedOtherKeySinceWinKey", state.hasPressedOtherKeySinceWinKey);
    writeSnaps(out, state);
    out.member("tap", nameOf(engine.tap())).endObject();
}

}  // namespace orvel::replay
