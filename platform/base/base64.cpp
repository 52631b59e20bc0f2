#include "platform/base/base64.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orvel {

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr auto kValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::int8_t>(i);
    }
    return values;
}();

/// The bits of up to three bytes, the first one highest.
std::uint32_t gather(std::span<const std::byte> bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        bits = bits << 8U | (i < bytes.size() ? std::to_integer<std::uint32_t>(bytes[i]) : 0U);
    }
    return bits;
}

}  // namespace

std::string base64Encode(std::span<const std::byte> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    while (!bytes.empty()) {
        const std::size_t taken = std::min<std::size_t>(bytes.size(), 3);
        const std::uint32_t bits = gather(bytes.first(taken));
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= taken ? kAlphabet[bits >> (18U - 6U * i) & 0x3FU] : '=';
        }
        bytes = bytes.subspan(taken);
    }
    return text;
}

std::optional<std::vector<std::byte>> base64Decode(std::string_view text) {
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const char c : text.substr(0, text.find('='))) {
        const std::int8_t value = kValues[static_cast<unsigned char>(c)];
        if (value < 0) return std::nullopt;
        bits = bits << 6U | static_cast<std::uint32_t>(value);
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        bytes.push_back(static_cast<std::byte>(bits >> bitCount & 0xFFU));
    }
    if (base64Encode(bytes) != text) return std::nullopt;
    return bytes;
}

}  // namespace orvel
