#include "platform/x11/posted_keys.hpp"

#include <X11/XF86keysym.h>

#include <algorithm>
#include <array>

namespace orvel::x11 {

namespace {

struct MediaKeySymbol {
    int keyType;
    std::uint32_t symbol;
};

/// Media keys by the numbers that system-defined events carry.
constexpr std::array kMediaKeySymbols{
    MediaKeySymbol{0, XF86XK_AudioRaiseVolume},   MediaKeySymbol{1, XF86XK_AudioLowerVolume},
    MediaKeySymbol{2, XF86XK_MonBrightnessUp},    MediaKeySymbol{3, XF86XK_MonBrightnessDown},
    MediaKeySymbol{7, XF86XK_AudioMute},          MediaKeySymbol{14, XF86XK_Eject},
    MediaKeySymbol{16, XF86XK_AudioPlay},         MediaKeySymbol{17, XF86XK_AudioNext},
    MediaKeySymbol{18, XF86XK_AudioPrev},         MediaKeySymbol{19, XF86XK_AudioForward},
    MediaKeySymbol{20, XF86XK_AudioRewind},       MediaKeySymbol{21, XF86XK_KbdBrightnessUp},
    MediaKeySymbol{22, XF86XK_KbdBrightnessDown}, MediaKeySymbol{23, XF86XK_KbdLightOnOff},
};

constexpr std::int64_t kMediaKeyDown = 0xA;

}  // namespace

PostedKeys::PostedKeys(const KeyMap& map, const HidState& state, OutputLedger& ledger)
    : map_(map), state_(state), ledger_(ledger) {}

bool PostedKeys::post(std::span<const PostedKey> keys) {
    const auto canGoOut = [this](const PostedKey& key) {
        return key.type == EventType::flagsChanged || keyFor(key) != 0;
    };
    if (!std::all_of(keys.begin(), keys.end(), canGoOut)) return false;
    for (const PostedKey& key : keys) {
        key.type == EventType::flagsChanged ? postFlags(key) : postKey(key);
    }
    return true;
}

bool PostedKeys::post(std::span<const PostedMediaKey> keys) {
    const auto canGoOut = [this](const PostedMediaKey& key) { return keyFor(key) != 0; };
    if (!std::all_of(keys.begin(), keys.end(), canGoOut)) return false;
    for (const PostedMediaKey& media : keys) {
        const XKeycode out = keyFor(media);
        const bool isDown = (media.data1 >> 8 & 0xF) == kMediaKeyDown;
        if (isDown) {
            ledger_.press({kPostedDevice, out}, out, {ModifierWish::Kind::exactly, {}});
        } else {
            ledger_.release({kPostedDevice, out});
        }
    }
    return true;
}

void PostedKeys::postKey(const PostedKey& key) {
    const XKeycode out = keyFor(key);
    const DeviceKey source{kPostedDevice, out};
    if (key.type == EventType::keyUp) return ledger_.release(source);
    const auto foreign = translator_ && key.flags
                             ? translator_({key.keyCode, *key.flags, std::nullopt})
                             : std::nullopt;
    const XKeycode foreignOut = foreign ? map_.keycodeOf(foreign->key) : XKeycode{0};
    if (foreignOut != 0)
        return ledger_.press(source, foreignOut, {ModifierWish::Kind::exactly, foreign->modifiers});
    ModifierWish wish;
    if (key.flags) wish = {ModifierWish::Kind::exactly, modifiersForFlags(*key.flags)};
    ledger_.press(source, out, wish);
}

void PostedKeys::postFlags(const PostedKey& key) {
    const EventFlags flags = key.flags.value_or(state_.flags());
    const XKeycode out = modifierKeyFor(map_, key.keyCode);
    const bool isPress = holdsAny(flags, flagOfKey(key.keyCode));
    if (isPress && out != 0) ledger_.press({kPostedDevice, out}, out, {});
    ledger_.keepPostedModifiers(modifiersForFlags(flags));
}

XKeycode PostedKeys::keyFor(const PostedKey& key) const {
    return isModifierKey(key.keyCode) ? modifierKeyFor(map_, key.keyCode)
                                      : map_.keycodeOf(key.keyCode);
}

XKeycode PostedKeys::keyFor(const PostedMediaKey& key) const {
    const auto keyType = static_cast<int>(key.data1 >> 16 & 0xFFFF);
    const auto row = std::find_if(kMediaKeySymbols.begin(), kMediaKeySymbols.end(),
                                  [&](const auto& media) { return media.keyType == keyType; });
    return row == kMediaKeySymbols.end() ? XKeycode{0} : map_.keyWithSymbol(row->symbol);
}

}  // namespace orvel::x11
