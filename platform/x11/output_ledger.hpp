#pragma once

#include "platform/x11/hid_state.hpp"

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace orvel::x11 {

/// Posted events hold keys as if they came from this device.
inline constexpr int kPostedDevice = -1;

/// The modifiers that applications shall see with a key.
struct ModifierWish {
    enum class Kind : std::uint8_t {
        asOutput,  ///< those that are out anyway
        asHeld,    ///< those that are physically held, as themselves
        exactly,   ///< `modifiers` and no others
    };
    Kind kind = Kind::asOutput;
    XModifiers modifiers;
};

/// Remembers what was put out for each held key, and puts out no more than that: a press owns its
/// release, whatever is decided about the release. Modifiers are pressed and released around keys
/// so that applications see what was wished. They stay so while the last such key is held, since
/// the server repeats it, and return to what is held when it is released.
///
/// A modifier that goes up without any key that the application saw would count as a tap of its
/// own and open a menu. Unless the user tapped it, a neutral key goes out before.
class OutputLedger {
public:
    /// Puts one key of the synthetic device down or up.
    using Send = std::function<void(XKeycode, bool down)>;

    OutputLedger(const KeyMap& map, Send send);

    /// Puts `out` down for `source`. Modifier keys take no wish.
    void press(DeviceKey source, XKeycode out, ModifierWish wish);
    /// Notes that `source` is held and nothing is out for it.
    void swallow(DeviceKey source);
    /// An auto-repeat of a held `source` leaves as `out`, 0 when swallowed. Posts nothing when the
    /// key is out already, since the server repeats it.
    void repeat(DeviceKey source, XKeycode out, ModifierWish wish);
    /// The physical key is up; modifiers are not given back to it any more.
    void beginRelease(DeviceKey source);
    /// Puts up what was put down for `source`; for an unknown one, its own key.
    void release(DeviceKey source);
    /// The modifiers that are down go up as no taps of the user's own.
    void claimTaps();
    /// Notes that `source` was held before anything was watched: applications have seen it.
    void adopt(DeviceKey source);
    /// Modifiers held by posted flags: those missing in `modifiers` go up.
    void keepPostedModifiers(XModifiers modifiers);
    /// Puts everything up and forgets it.
    void releaseAll();

    /// Keys that are down on the synthetic device.
    [[nodiscard]] const XKeySet& down() const { return down_; }

private:
    struct Entry {
        DeviceKey source;
        XKeycode out = 0;
        bool isLeaving = false;
    };
    /// How a modifier that is down looks to applications.
    struct Look {
        bool isUsed = false;  ///< a key went down meanwhile
        bool isOurs = false;  ///< not the user's own press, or its key was swallowed
    };
    struct Pin {
        DeviceKey owner;
        ModifierWish wish;
    };

    [[nodiscard]] Entry* find(DeviceKey source);
    [[nodiscard]] bool isModifier(XKeycode key) const { return map_.modifierOf(key).has_value(); }
    [[nodiscard]] XKeySet heldModifiers() const;
    [[nodiscard]] XKeySet modifiersAsThemselves() const;
    [[nodiscard]] XKeySet resolve(const ModifierWish& wish) const;
    [[nodiscard]] bool isHeldElsewhere(XKeycode key, DeviceKey source) const;

    [[nodiscard]] XKeycode keyFor(XModifier modifier) const;
    void noteLastPressed(DeviceKey source);

    void pressModifier(DeviceKey source, XKeycode out);
    void pressKey(DeviceKey source, XKeycode out, ModifierWish wish);
    void putUp(DeviceKey source, XKeycode out);
    void pinWish(DeviceKey source, ModifierWish wish);
    void unpin(DeviceKey source);
    void settleModifiers();
    void moveModifiers(const XKeySet& wanted);
    void letModifierGo(XKeycode key, bool isOwnRelease);
    void tapNeutralKey();
    void sendKey(XKeycode key, bool down);

    const KeyMap& map_;
    Send send_;
    std::vector<Entry> entries_;
    XKeySet down_;
    std::array<Look, 256> looks_{};
    std::optional<Pin> pin_;
    std::optional<DeviceKey> lastPressed_;
    XKeycode repeating_ = 0;
};

}  // namespace orvel::x11
