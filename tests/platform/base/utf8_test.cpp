#include "platform/base/utf8.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace orvel {
namespace {

TEST(Utf8, MeasuresTheSequenceAtTheStart) {
    EXPECT_EQ(utf8Length("ab"), 1U);
    EXPECT_EQ(utf8Length("\u00e9b"), 2U);
    EXPECT_EQ(utf8Length("\u20acb"), 3U);
    EXPECT_EQ(utf8Length("\U0001f680b"), 4U);
    EXPECT_EQ(utf8Length(""), 0U);
}

TEST(Utf8, TakesTheFirstAndTheLastCodePointOfEachLength) {
    const std::string_view null("\0", 1);
    for (const std::string_view text :
         {null, std::string_view("\x7f"), std::string_view("\u0080"), std::string_view("\u07ff"),
          std::string_view("\u0800"), std::string_view("\ud7ff"), std::string_view("\ue000"),
          std::string_view("\uffff"), std::string_view("\U00010000"),
          std::string_view("\U0010ffff")}) {
        EXPECT_EQ(utf8Length(text), text.size()) << testing::PrintToString(text);
        EXPECT_TRUE(isUtf8(text)) << testing::PrintToString(text);
    }
}

TEST(Utf8, RefusesWhatIsLongerThanNeedBe) {
    EXPECT_EQ(utf8Length("\xc0\x80"), 0U);
    EXPECT_EQ(utf8Length("\xc1\xbf"), 0U);
    EXPECT_EQ(utf8Length("\xe0\x9f\xbf"), 0U);
    EXPECT_EQ(utf8Length("\xf0\x8f\xbf\xbf"), 0U);
}

TEST(Utf8, RefusesSurrogatesAndWhatIsBeyondTheLastCodePoint) {
    EXPECT_EQ(utf8Length("\xed\xa0\x80"), 0U);
    EXPECT_EQ(utf8Length("\xed\xbf\xbf"), 0U);
    EXPECT_EQ(utf8Length("\xf4\x90\x80\x80"), 0U);
    EXPECT_EQ(utf8Length("\xf5\x80\x80\x80"), 0U);
    EXPECT_EQ(utf8Length("\xff"), 0U);
}

TEST(Utf8, RefusesHalfASequenceAndAContinuationAlone) {
    EXPECT_EQ(utf8Length("\xc3"), 0U);
    EXPECT_EQ(utf8Length("\xe2\x82"), 0U);
    EXPECT_EQ(utf8Length("\xe2\x82z"), 0U);
    EXPECT_EQ(utf8Length("\xf0\x9f\x9a"), 0U);
    EXPECT_EQ(utf8Length("\x80"), 0U);
}

TEST(Utf8, ATextIsUtf8WhenAllOfItIs) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("a\u00e9\u20ac\U0001f680"));
    EXPECT_FALSE(isUtf8("a\xe9z"));
    EXPECT_FALSE(isUtf8("a\xe2\x82"));
    EXPECT_FALSE(isUtf8("a\xed\xa0\x80"));
}

}  // namespace
}  // namespace orvel
