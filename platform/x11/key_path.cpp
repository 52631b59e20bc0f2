#include "platform/x11/key_path.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

/// Keys that never leave: no application knows a Fn key.
XKeycode asItself(DeviceKey source, KeyCode code) {
    return code == key::fn ? XKeycode{0} : source.keycode;
}

ModifierWish wishFor(EventVerdict verdict, EventFlags flags) {
    if (verdict == EventVerdict::pass) return {ModifierWish::Kind::asHeld, {}};
    return {ModifierWish::Kind::exactly, modifiersForFlags(flags)};
}

}  // namespace

KeyPath::KeyPath(const KeyMap& map, HidState& state, OutputLedger& ledger)
    : map_(map), state_(state), ledger_(ledger) {}

void KeyPath::handle(const DeviceKeyEvent& event) {
    const KeyCode code = map_.keyCodeOf(event.key.keycode);
    if (!isModifierKey(code)) {
        return event.down ? pressKey(event.key, code, event.isRepeat) : releaseKey(event.key, code);
    }
    if (event.isRepeat) return;
    return event.down ? pressModifier(event.key, code) : releaseModifier(event.key, code);
}

void KeyPath::pressModifier(DeviceKey source, KeyCode code) {
    state_.press(source, code);
    if (code == key::capsLock) state_.setCapsLock(!state_.capsLock());
    Event event{.type = EventType::flagsChanged, .keyCode = code, .flags = state_.flags()};
    const EventVerdict verdict = decide(event);
    // Whoever claims Caps Lock sets the lock of the session without its key.
    const bool isHidden = isTapClaimed_ && code == key::capsLock;
    if (verdict == EventVerdict::swallow || isHidden) return ledger_.swallow(source);
    const bool isOther = verdict == EventVerdict::modify && event.keyCode != code;
    ledger_.press(source, isOther ? modifierKeyFor(map_, event.keyCode) : asItself(source, code),
                  {});
}

void KeyPath::releaseModifier(DeviceKey source, KeyCode code) {
    state_.release(source);
    ledger_.beginRelease(source);
    // One change of the lock is one event, and its press told it.
    if (code != key::capsLock) {
        Event event{.type = EventType::flagsChanged, .keyCode = code, .flags = state_.flags()};
        static_cast<void>(decide(event));
        if (isTapClaimed_) ledger_.claimTaps();
    }
    ledger_.release(source);
}

void KeyPath::pressKey(DeviceKey source, KeyCode code, bool isRepeat) {
    state_.press(source, code);
    Event event{.type = EventType::keyDown,
                .keyCode = code,
                .flags = state_.flags() | ownFlagsOfKey(code),
                .isAutorepeat = isRepeat};
    const EventVerdict verdict = decide(event);
    const auto foreign = translated(verdict, event, code);
    const KeyCode outCode = foreign ? foreign->key : event.keyCode;
    const XKeycode same = source.keycode;
    const XKeycode out = verdict == EventVerdict::swallow ? XKeycode{0}
                         : outCode == code                ? same
                                                          : map_.keycodeOf(outCode);
    const ModifierWish wish = foreign
                                  ? ModifierWish{ModifierWish::Kind::exactly, foreign->modifiers}
                                  : wishFor(verdict, event.flags);
    if (isRepeat) return ledger_.repeat(source, out, wish);
    ledger_.press(source, out, wish);
}

void KeyPath::releaseKey(DeviceKey source, KeyCode code) {
    state_.release(source);
    ledger_.beginRelease(source);
    Event event{
        .type = EventType::keyUp, .keyCode = code, .flags = state_.flags() | ownFlagsOfKey(code)};
    static_cast<void>(decide(event));
    ledger_.release(source);
}

void KeyPath::releaseDevice(int device) {
    std::vector<DeviceKey> keys = state_.keysOf(device);
    std::reverse(keys.begin(), keys.end());
    for (const DeviceKey& key : keys) handle({.key = key});
}

void KeyPath::adopt(DeviceKey key) {
    state_.press(key, map_.keyCodeOf(key.keycode));
    ledger_.adopt(key);
}

std::optional<XShortcut> KeyPath::translated(EventVerdict verdict, const Event& event,
                                             KeyCode source) const {
    if (verdict != EventVerdict::modify || !translator_) return std::nullopt;
    return translator_({event.keyCode, event.flags, source});
}

EventVerdict KeyPath::decide(Event& event) {
    isTapClaimed_ = false;
    return handler_ ? handler_(event) : EventVerdict::pass;
}

}  // namespace orvel::x11
