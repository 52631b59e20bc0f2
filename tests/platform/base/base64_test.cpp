#include "platform/base/base64.hpp"

#include <gtest/gtest.h>

namespace orvel {
namespace {

std::vector<std::byte> bytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

TEST(Base64Test, GoesThereAndBack) {
    const std::pair<std::string_view, std::string_view> pairs[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\xFB\xFF\xBF", "+/+/"},
    };
    for (const auto& [plain, coded] : pairs) {
        EXPECT_EQ(base64Encode(bytesOf(plain)), coded);
        EXPECT_EQ(base64Decode(coded), bytesOf(plain)) << coded;
    }
}

TEST(Base64Test, RefusesWhatItWouldNotWrite) {
    for (const std::string_view wrong : {"Z", "Zg", "Zg=", "Zg===", "=", "Zm9v=", "Zm9v====",
                                         "Zh==", "Zm9v\n", "Zm 9v", "Zm9-", "Zg==Zg=="}) {
        EXPECT_EQ(base64Decode(wrong), std::nullopt) << wrong;
    }
}

}  // namespace
}  // namespace orvel
