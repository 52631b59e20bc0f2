#include "platform/base/utf8.hpp"

namespace orvel {

namespace {

unsigned char byteAt(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

/// Whether `count` continuation bytes follow the first byte of `text`.
bool continues(std::string_view text, std::size_t count) {
    if (text.size() <= count) return false;
    for (std::size_t i = 1; i <= count; ++i) {
        if ((byteAt(text, i) & 0xC0) != 0x80) return false;
    }
    return true;
}

}  // namespace

std::size_t utf8Length(std::string_view text) {
    if (text.empty()) return 0;
    const unsigned char lead = byteAt(text, 0);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return continues(text, 1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        if (!continues(text, 2)) return 0;
        const bool overlong = lead == 0xE0 && byteAt(text, 1) < 0xA0;
        const bool surrogate = lead == 0xED && byteAt(text, 1) > 0x9F;
        return overlong || surrogate ? 0 : 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (!continues(text, 3)) return 0;
        const bool overlong = lead == 0xF0 && byteAt(text, 1) < 0x90;
        const bool tooLarge = lead == 0xF4 && byteAt(text, 1) > 0x8F;
        return overlong || tooLarge ? 0 : 4;
    }
    return 0;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = utf8Length(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace orvel
