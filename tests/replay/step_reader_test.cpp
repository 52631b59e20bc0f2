#include "app/replay/step_reader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace orvel::replay {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

using NumberedLines = std::vector<std::pair<std::int64_t, std::string>>;

NumberedLines linesOf(const std::string& text) {
    std::istringstream in(text);
    StepReader reader(in, [] {});
    NumberedLines lines;
    while (reader.nextLine()) lines.emplace_back(reader.lineNumber(), reader.line());
    return lines;
}

std::string failureOf(std::string_view line) {
    const auto step = parseStep(line);
    return step ? "" : step.error();
}

TEST(StepReaderTest, CountsSkippedLines) {
    EXPECT_THAT(linesOf("\n# note\na\n \t\r\nb\n#c"), ElementsAre(Pair(3, "a"), Pair(5, "b")));
}

TEST(StepReaderTest, ReadsALastLineWithoutBreak) {
    EXPECT_THAT(linesOf("a\nb"), ElementsAre(Pair(1, "a"), Pair(2, "b")));
    EXPECT_THAT(linesOf(""), IsEmpty());
}

TEST(StepReaderTest, DropsAByteOrderMarkAtTheVeryBeginning) {
    EXPECT_THAT(linesOf("\xEF\xBB\xBF# note\na"), ElementsAre(Pair(2, "a")));
    EXPECT_THAT(linesOf("a\n\xEF\xBB\xBF"
                        "b"),
                ElementsAre(Pair(1, "a"), Pair(2,
                                               "\xEF\xBB\xBF"
                                               "b")));
}

TEST(StepReaderTest, SaysWhenItMayHaveToWait) {
    std::istringstream in("a\nb\n");
    int waits = 0;
    StepReader reader(in, [&waits] { ++waits; });
    ASSERT_TRUE(reader.nextLine());
    ASSERT_TRUE(reader.nextLine());
    EXPECT_EQ(waits, 0);
    EXPECT_FALSE(reader.nextLine());
    EXPECT_EQ(waits, 1);
}

TEST(StepReaderTest, KnowsEveryStepKey) {
    for (std::size_t i = 0; i < kStepKeys.size(); ++i) {
        const auto step = parseStep("{\"" + std::string(kStepKeys[i]) + "\": 1}");
        ASSERT_TRUE(step.ok()) << kStepKeys[i];
        EXPECT_EQ(static_cast<std::size_t>(step.value().key), i);
        EXPECT_EQ(step.value().value.number(), 1);
    }
}

TEST(StepReaderTest, SaysWhatIsWrongWithAStep) {
    EXPECT_THAT(failureOf("{"), HasSubstr("not valid JSON"));
    EXPECT_THAT(failureOf("{\"advance\": 1} x"), HasSubstr("not valid JSON"));
    EXPECT_EQ(failureOf("3"), "a step must be an object");
    EXPECT_EQ(failureOf("{}"), "no step key");
    EXPECT_EQ(failureOf("{\"x\": 1}"), "unknown step key \"x\"");
    EXPECT_EQ(failureOf("{\"advance\": 1, \"query\": 2}"),
              "two step keys: \"advance\" and \"query\"");
    EXPECT_EQ(failureOf("{\"advance\": 1, \"advance\": 2}"),
              "two step keys: \"advance\" and \"advance\"");
}

}  // namespace
}  // namespace orvel::replay
