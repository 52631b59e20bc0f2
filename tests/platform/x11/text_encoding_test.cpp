#include "platform/x11/text_encoding.hpp"

#include <gtest/gtest.h>

namespace orvel::x11 {
namespace {

TEST(TextEncoding, ReadsEveryByteOfLatin1) {
    EXPECT_EQ(utf8FromLatin1("a\xe9\xff\x80"), "a\u00e9\u00ff\u0080");
    EXPECT_EQ(utf8FromLatin1("\xc3\xa9"), "\u00c3\u00a9") << "also what looks like UTF-8";
}

TEST(TextEncoding, WritesWhatLatin1CanSay) {
    EXPECT_EQ(latin1FromUtf8("a\u00e9\u00ff\u0080"), "a\xe9\xff\x80");
    EXPECT_EQ(latin1FromUtf8("a\u0100\u20ac\U0001f680z"), "a???z");
    EXPECT_EQ(latin1FromUtf8("a\xc3"), "a?") << "half a sequence";
}

}  // namespace
}  // namespace orvel::x11
