#include "platform/base/private_log_file.hpp"

#include "tests/support/scratch_home.hpp"

#include <gtest/gtest.h>

namespace orvel {
namespace {

class PrivateLogFileTest : public ::testing::Test {
protected:
    test::ScratchFolder folder;
    const std::string path = folder.at("logs/trace.log");
};

TEST_F(PrivateLogFileTest, OpensNothingBeforeTheFirstLine) {
    PrivateLogFile file(path);
    EXPECT_FALSE(folder.has("logs"));
    file.write("first");
    EXPECT_EQ(folder.read("logs/trace.log"), "first\n");
}

TEST_F(PrivateLogFileTest, AddsToWhatIsThereAndClosesItToOthers) {
    folder.write("logs/trace.log", "old\n");
    std::filesystem::permissions(path, std::filesystem::perms::all);
    PrivateLogFile(path).write("new");
    EXPECT_EQ(folder.read("logs/trace.log"), "old\nnew\n");
    EXPECT_EQ(folder.mode("logs/trace.log"), 0600U);
}

TEST_F(PrivateLogFileTest, BeginsAnewAtItsLimitAndKeepsTheLastFile) {
    constexpr std::uintmax_t kLimit = 20;
    PrivateLogFile file(path, kLimit);
    for (const char* line : {"one 456789", "two 456789", "three 6789"}) file.write(line);
    EXPECT_EQ(folder.read("logs/trace.log"), "three 6789\n");
    EXPECT_EQ(folder.read("logs/trace.log.1"), "two 456789\n");
    EXPECT_EQ(folder.mode("logs/trace.log"), 0600U);
}

TEST_F(PrivateLogFileTest, DoesNotFollowALink) {
    folder.write("target", "untouched");
    std::filesystem::create_directories(folder.at("logs"));
    std::filesystem::create_symlink(folder.at("target"), path);
    PrivateLogFile(path).write("secret");
    EXPECT_EQ(folder.read("target"), "untouched");
}

}  // namespace
}  // namespace orvel
