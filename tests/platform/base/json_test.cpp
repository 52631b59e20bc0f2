#include "platform/base/json.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvel {
namespace {

using ::testing::HasSubstr;

std::string rewritten(std::string_view text) {
    const auto parsed = parseJson(text);
    if (!parsed) return "(" + parsed.error() + ")";
    JsonWriter writer;
    return writer.value(parsed.value()).text();
}

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(JsonTest, GoesThereAndBack) {
    for (const std::string_view text :
         {R"({"b":1,"a":[true,false,null,"x",-2.5]})", R"("\"\\\n\u0001 汉字 🚀")", "[]", "{}",
          "9223372036854775807", "-9223372036854775808"}) {
        EXPECT_EQ(rewritten(text), text);
    }
}

TEST(JsonTest, WritesNumbersWithoutAFractionAsIntegers) {
    EXPECT_EQ(rewritten("[1.0,1e3,-0.0,0.1]"), "[1,1000,0,0.1]");
}

TEST(JsonTest, ReadsNumbersOfEveryLength) {
    EXPECT_EQ(rewritten("[9223372036854775807,-9223372036854775808,-0]"),
              "[9223372036854775807,-9223372036854775808,0]");
    EXPECT_EQ(rewritten("[18446744073709551616]"), "[18446744073709551616]");
    EXPECT_EQ(rewritten("0." + std::string(400, '0')), "0");
    EXPECT_EQ(rewritten("0." + std::string(400, '0') + "e5"), "0");
    EXPECT_EQ(rewritten("0." + std::string(400, '0') + "1"), "0");
    EXPECT_EQ(rewritten("-1e-400"), "0");
    EXPECT_EQ(rewritten("0.1" + std::string(400, '0')), "0.1");
}

TEST(JsonTest, RefusesNumbersBeyondEveryRange) {
    EXPECT_THAT(rewritten("[1e400]"), HasSubstr("too big"));
    EXPECT_THAT(rewritten("1" + std::string(400, '0') + "e-1"), HasSubstr("too big"));
    EXPECT_THAT(rewritten("[-1" + std::string(400, '0') + "]"), HasSubstr("too big"));
}

TEST(JsonTest, SaysWhatIsWrongAndWhere) {
    EXPECT_THAT(rewritten("[1,]"), HasSubstr("byte 3"));
    EXPECT_THAT(rewritten("[1] x"), HasSubstr("byte 4"));
    EXPECT_THAT(rewritten("\"\xFF\""), HasSubstr("encoding"));
    EXPECT_THAT(rewritten(""), HasSubstr("empty"));
    EXPECT_THAT(rewritten(std::string_view("1\0", 2)), HasSubstr("Zero byte"));
}

TEST(JsonTest, BoundsTheDepthOfValues) {
    EXPECT_EQ(rewritten(nested(500)), nested(500));
    EXPECT_THAT(rewritten(nested(501)), HasSubstr("nested too deeply"));
    EXPECT_THAT(rewritten(std::string(1000000, '[')), HasSubstr("nested too deeply"));
}

TEST(JsonTest, FindsTheFirstMemberOfAName) {
    const auto parsed = parseJson(R"({"a":1,"b":2,"a":3})");
    ASSERT_TRUE(parsed.ok());
    EXPECT_EQ(*parsed.value().member("a")->asInteger(), 1);
    EXPECT_EQ(parsed.value().member("c"), nullptr);
}

TEST(JsonWriterTest, ReplacesInvalidText) {
    JsonWriter writer;
    EXPECT_EQ(writer.value("a\xFF\xC3").text(), "\"a\xEF\xBF\xBD\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace orvel
