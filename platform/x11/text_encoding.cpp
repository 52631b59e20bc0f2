#include "platform/x11/text_encoding.hpp"

namespace orvel::x11 {

namespace {

constexpr char kUnknown = '?';

unsigned char byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

bool isContinuation(unsigned char byte) { return (byte & 0xc0U) == 0x80; }

}  // namespace

std::string utf8FromLatin1(std::string_view latin1) {
    std::string utf8;
    utf8.reserve(latin1.size());
    for (const char byte : latin1) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            utf8 += byte;
        } else {
            utf8 += static_cast<char>(0xc0U | (code >> 6U));
            utf8 += static_cast<char>(0x80U | (code & 0x3fU));
        }
    }
    return utf8;
}

std::string latin1FromUtf8(std::string_view utf8) {
    std::string latin1;
    latin1.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto lead = byteAt(utf8, at);
        const bool isTwoByteLatin = (lead == 0xc2 || lead == 0xc3) && at + 1 < utf8.size();
        if (lead < 0x80) {
            latin1 += utf8[at];
        } else if (isTwoByteLatin) {
            latin1 += static_cast<char>((lead & 0x03U) << 6U | (byteAt(utf8, at + 1) & 0x3fU));
        } else {
            latin1 += kUnknown;
        }
        ++at;
        while (at < utf8.size() && isContinuation(byteAt(utf8, at))) ++at;
    }
    return latin1;
}

}  // namespace orvel::x11
