#pragma once

#include "platform/event_tap.hpp"
#include "platform/x11/output_ledger.hpp"
#include "platform/x11/shortcut_dialect.hpp"

namespace orvel::x11 {

/// A key event of a physical device.
struct DeviceKeyEvent {
    DeviceKey key;
    bool down = false;
    bool isRepeat = false;
};

/// The way of a key from its device through the handler to the ledger of what goes out. Without
/// a handler everything passes.
class KeyPath {
public:
    KeyPath(const KeyMap& map, HidState& state, OutputLedger& ledger);

    void setHandler(EventHandler handler) { handler_ = std::move(handler); }
    /// Asked about every key that the handler rewrote.
    void setTranslator(ShortcutTranslator translator) { translator_ = std::move(translator); }
    void handle(const DeviceKeyEvent& event);
    /// Called while the handler decides a modifier key that switches an input method: the method
    /// has meanings of its own for a tap of Shift and for Caps Lock, and shall see neither.
    void claimTap() { isTapClaimed_ = true; }
    /// The device is gone: its held keys are released, the last one pressed first.
    void releaseDevice(int device);
    /// Notes a key that was held when its device was taken.
    void adopt(DeviceKey key);

private:
    void pressModifier(DeviceKey source, KeyCode code);
    void releaseModifier(DeviceKey source, KeyCode code);
    void pressKey(DeviceKey source, KeyCode code, bool isRepeat);
    void releaseKey(DeviceKey source, KeyCode code);
    [[nodiscard]] EventVerdict decide(Event& event);
    [[nodiscard]] std::optional<XShortcut> translated(EventVerdict verdict, const Event& event,
                                                      KeyCode source) const;

    const KeyMap& map_;
    HidState& state_;
    OutputLedger& ledger_;
    EventHandler handler_;
    ShortcutTranslator translator_;
    bool isTapClaimed_ = false;
};

}  // namespace orvel::x11
