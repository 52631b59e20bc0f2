#include "engine/rule_table.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ranges>
#include <string>
#include <vector>

namespace orvel::test {
namespace {

using ::testing::ElementsAre;

std::vector<std::string_view> ruleNames() {
    std::vector<std::string_view> names;
    for (const Rule& rule : ruleTable()) names.push_back(rule.name);
    return names;
}

// The order is behaviour: whoever moves a row changes what people's keys do, and says so here.
TEST(RuleTable, KeepsItsOrder) {
    EXPECT_THAT(ruleNames(),
                ElementsAre("own events", "clipboard panel keys", "master switch", "other keys",
                            "pause", "fn sacrifice", "caps lock", "single shift", "modifier remap",
                            "option menu search", "lone win", "scroll reversal", "middle click",
                            "side buttons", "held keys", "lost release", "forward delete",
                            "key-up completion", "escape keys", "function row", "finder keys",
                            "win commands", "win digits", "browser habits", "window snap keys",
                            "app switcher", "fn arrows", "key-level remap", "redo"));
}

TEST(RuleTable, HasAFolderOfTranscriptsForEveryRule) {
    for (std::string folder :
         ruleNames() | std::views::transform([](auto name) { return std::string(name); })) {
        std::ranges::replace_if(
            folder, [](char c) { return c == ' ' || c == '-'; }, '_');
        EXPECT_TRUE(std::filesystem::is_directory("tests/replay/" + folder)) << folder;
    }
}

TEST(RuleTable, LooksAtPressesWhereTheReleaseFollowsThePress) {
    for (const Rule& rule : ruleTable()) {
        if (rule.release != Release::followsPress) continue;
        EXPECT_EQ(rule.events, maskOf(EventType::keyDown)) << rule.name;
    }
}

TEST(RuleTable, DescribesEveryRule) {
    const std::string text = describeRules();
    for (const std::string_view name : ruleNames()) {
        EXPECT_NE(text.find("| " + std::string(name) + " |"), std::string::npos) << name;
    }
}

// The document is for reading; the table is the truth. `make accept` rewrites it.
TEST(RuleTable, IsTheOneInTheDocument) {
    const std::filesystem::path document = "docs/rules.md";
    const std::string expected =
        "# The rules, in the order in which events meet them\n\n" + describeRules();
    if (std::getenv("ORVEL_ACCEPT") != nullptr) std::ofstream(document) << expected;
    std::ifstream file(document);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), expected);
}

}  // namespace
}  // namespace orvel::test
