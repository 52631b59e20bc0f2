#include "platform/x11/output_ledger.hpp"

#include <algorithm>
#include <utility>

namespace orvel::x11 {

namespace {

/// Calls `visit` for every key of the set, which may change meanwhile.
template <typename Visit>
void forEachKey(XKeySet keys, Visit visit) {
    for (std::size_t key = keys._Find_first(); key < keys.size(); key = keys._Find_next(key)) {
        visit(static_cast<XKeycode>(key));
    }
}

}  // namespace

OutputLedger::OutputLedger(const KeyMap& map, Send send) : map_(map), send_(std::move(send)) {}

void OutputLedger::press(DeviceKey source, XKeycode out, ModifierWish wish) {
    if (out == 0) return swallow(source);
    if (find(source) != nullptr) release(source);
    if (isModifier(out)) {
        pressModifier(source, out);
    } else {
        pressKey(source, out, wish);
    }
    noteLastPressed(source);
}

void OutputLedger::swallow(DeviceKey source) {
    if (find(source) != nullptr) release(source);
    entries_.push_back({source});
    noteLastPressed(source);
    claimTaps();
}

void OutputLedger::claimTaps() {
    forEachKey(down_, [this](XKeycode key) { looks_[key].isOurs = true; });
}

void OutputLedger::noteLastPressed(DeviceKey source) {
    if (source.device != kPostedDevice && !isModifier(source.keycode)) lastPressed_ = source;
}

void OutputLedger::pressModifier(DeviceKey source, XKeycode out) {
    entries_.push_back({source, out});
    const bool wasDown = down_[out];
    settleModifiers();
    if (!wasDown && down_[out]) looks_[out].isOurs = source.device == kPostedDevice;
}

void OutputLedger::pressKey(DeviceKey source, XKeycode out, ModifierWish wish) {
    pinWish(source, wish);
    settleModifiers();
    entries_.push_back({source, out});
    // Held by another source: it goes up first, so that this press is seen.
    if (down_[out]) sendKey(out, false);
    sendKey(out, true);
}

void OutputLedger::repeat(DeviceKey source, XKeycode out, ModifierWish wish) {
    Entry* entry = find(source);
    if (entry == nullptr) return press(source, out, wish);
    if (entry->out != out) {
        const XKeycode old = std::exchange(entry->out, XKeycode{0});
        putUp(source, old);
        if (out != 0) press(source, out, wish);
        return;
    }
    if (out == 0 || isModifier(out) || lastPressed_ != source) return;
    pinWish(source, wish);
    settleModifiers();
    if (repeating_ == out) return;
    // Another key went down meanwhile, and the server repeats only the last one.
    sendKey(out, false);
    sendKey(out, true);
}

void OutputLedger::beginRelease(DeviceKey source) {
    if (Entry* entry = find(source)) entry->isLeaving = true;
}

void OutputLedger::release(DeviceKey source) {
    const Entry* entry = find(source);
    if (entry == nullptr) {
        // Held since before the first event: the server clears it when we put it up.
        const bool isHeld =
            source.device == kPostedDevice || isHeldElsewhere(source.keycode, source);
        if (!isHeld) sendKey(source.keycode, false);
        return;
    }
    const XKeycode out = entry->out;
    std::erase_if(entries_, [source](const Entry& old) { return old.source == source; });
    if (out != 0) putUp(source, out);
    if (lastPressed_ == source) lastPressed_.reset();
}

void OutputLedger::putUp(DeviceKey source, XKeycode out) {
    if (isModifier(out)) {
        const bool isStillHeld = isHeldElsewhere(out, source);
        if (down_[out] && !isStillHeld && !pin_) letModifierGo(out, true);
    } else if (!isHeldElsewhere(out, source) && down_[out]) {
        sendKey(out, false);
    }
    unpin(source);
    settleModifiers();
}

void OutputLedger::adopt(DeviceKey source) {
    if (find(source) != nullptr) return;
    entries_.push_back({source, source.keycode});
    down_[source.keycode] = true;
    looks_[source.keycode] = {.isUsed = true};
}

void OutputLedger::keepPostedModifiers(XModifiers modifiers) {
    std::erase_if(entries_, [&](const Entry& entry) {
        const auto modifier = map_.modifierOf(entry.out);
        return entry.source.device == kPostedDevice && modifier && !modifiers[indexOf(*modifier)];
    });
    settleModifiers();
}

void OutputLedger::releaseAll() {
    entries_.clear();
    pin_.reset();
    lastPressed_.reset();
    forEachKey(down_, [this](XKeycode key) {
        if (!isModifier(key)) sendKey(key, false);
    });
    settleModifiers();
}

OutputLedger::Entry* OutputLedger::find(DeviceKey source) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [source](const Entry& old) { return old.source == source; });
    return entry == entries_.end() ? nullptr : &*entry;
}

XKeySet OutputLedger::heldModifiers() const {
    XKeySet keys;
    for (const Entry& entry : entries_) {
        if (entry.out != 0 && !entry.isLeaving && isModifier(entry.out)) keys.set(entry.out);
    }
    return keys;
}

XKeySet OutputLedger::modifiersAsThemselves() const {
    XKeySet keys;
    for (const Entry& entry : entries_) {
        const bool isPhysical = entry.source.device != kPostedDevice && !entry.isLeaving;
        if (isPhysical && isModifier(entry.source.keycode)) keys.set(entry.source.keycode);
    }
    return keys;
}

XKeySet OutputLedger::resolve(const ModifierWish& wish) const {
    if (wish.kind == ModifierWish::Kind::asOutput) return heldModifiers();
    if (wish.kind == ModifierWish::Kind::asHeld) return modifiersAsThemselves();
    XKeySet keys;
    XModifiers missing = wish.modifiers;
    forEachKey(heldModifiers(), [&](XKeycode key) {
        const std::size_t index = indexOf(*map_.modifierOf(key));
        if (!wish.modifiers[index]) return;
        keys.set(key);
        missing.reset(index);
    });
    for (std::size_t index = 0; index < kXModifierCount; ++index) {
        const XKeycode key = missing[index] ? keyFor(static_cast<XModifier>(index)) : XKeycode{0};
        if (key != 0) keys.set(key);
    }
    return keys;
}

/// One that is down already, so that nothing needs to change; else the left one.
XKeycode OutputLedger::keyFor(XModifier modifier) const {
    XKeycode found = 0;
    forEachKey(down_, [&](XKeycode key) {
        if (map_.modifierOf(key) == modifier) found = key;
    });
    return found != 0 ? found : map_.leftKey(modifier);
}

bool OutputLedger::isHeldElsewhere(XKeycode key, DeviceKey source) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.out == key && entry.source != source && !entry.isLeaving;
    });
}

void OutputLedger::pinWish(DeviceKey source, ModifierWish wish) {
    pin_.reset();
    if (resolve(wish) != heldModifiers()) pin_ = Pin{source, wish};
}

void OutputLedger::unpin(DeviceKey source) {
    if (pin_ && pin_->owner == source) pin_.reset();
}

void OutputLedger::settleModifiers() {
    moveModifiers(pin_ ? resolve(pin_->wish) : heldModifiers());
}

void OutputLedger::moveModifiers(const XKeySet& wanted) {
    // Up before down: two modifiers together may switch the layout.
    forEachKey(down_ & ~wanted, [this](XKeycode key) {
        if (isModifier(key)) letModifierGo(key, false);
    });
    forEachKey(wanted & ~down_, [this](XKeycode key) {
        looks_[key] = {.isUsed = false, .isOurs = true};
        sendKey(key, true);
    });
}

void OutputLedger::letModifierGo(XKeycode key, bool isOwnRelease) {
    const Look look = looks_[key];
    if (!look.isUsed && (look.isOurs || !isOwnRelease)) tapNeutralKey();
    sendKey(key, false);
}

void OutputLedger::tapNeutralKey() {
    const XKeycode neutral = map_.neutralKey();
    if (neutral == 0 || down_[neutral]) return;
    sendKey(neutral, true);
    sendKey(neutral, false);
    forEachKey(down_, [this](XKeycode key) { looks_[key].isUsed = true; });
}

void OutputLedger::sendKey(XKeycode key, bool down) {
    down_[key] = down;
    send_(key, down);
    if (isModifier(key)) return;
    if (down) {
        repeating_ = key;
        forEachKey(down_, [this](XKeycode modifier) { looks_[modifier].isUsed = true; });
    } else if (repeating_ == key) {
        repeating_ = 0;
    }
}

}  // namespace orvel::x11
