#include "engine/synthesis/media_key_poster.hpp"

#include <array>
#include <utility>

namespace orvel {

namespace {

constexpr std::array<std::pair<KeyCode, MediaKeyType>, 8> kMediaKeys{{
    {key::f1, 3},   // brightness down
    {key::f2, 2},   // brightness up
    {key::f7, 18},  // previous track
    {key::f8, 16},  // play or pause
    {key::f9, 17},  // next track
    {key::f10, 7},  // mute
    {key::f11, 1},  // volume down
    {key::f12, 0},  // volume up
}};

constexpr EventFlags kPressed = 0xA00;
constexpr EventFlags kReleased = 0xB00;

PostedMediaKey mediaEvent(MediaKeyType keyType, EventFlags state) {
    // Key type in the upper half, state in the lower one.
    const std::int64_t data = std::int64_t{keyType} * 0x10000;
    return {.flags = state, .data1 = data | static_cast<std::int64_t>(state)};
}

}  // namespace

std::optional<MediaKeyType> mediaKeyOf(KeyCode keyCode) {
    for (const auto& [code, type] : kMediaKeys) {
        if (code == keyCode) return type;
    }
    return std::nullopt;
}

void MediaKeyPoster::postMediaKey(MediaKeyType keyType) {
    const std::array keys{mediaEvent(keyType, kPressed), mediaEvent(keyType, kReleased)};
    poster_.postMediaKeys(keys);
}

}  // namespace orvel
