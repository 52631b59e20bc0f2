#include "app/cli/session_command.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvel {
namespace {

using ::testing::StartsWith;

/// Keeps what it is asked for.
class AskedProgram final : public SessionProgram {
public:
    [[nodiscard]] std::string traceFile() const override { return "trace.log"; }
    int run(const session::SessionOptions& options) override {
        asked = "run " + options.recordPath;
        return 7;
    }
    int openPanel() override {
        asked = "panel";
        return 7;
    }
    int doctor() override {
        asked = "doctor";
        return 7;
    }

    std::string asked;
};

class SessionCommandTest : public ::testing::Test {
protected:
    AskedProgram program;
    std::string said;

    int orvel(std::vector<std::string> words) {
        words.insert(words.begin(), "/usr/libexec/orvel/orvel-session");
        ::testing::internal::CaptureStderr();
        const int status = runSessionCommand(words, program);
        said = ::testing::internal::GetCapturedStderr();
        return status;
    }
};

TEST_F(SessionCommandTest, DoesWhatTheCommandSays) {
    EXPECT_EQ(orvel({"panel"}), 7);
    EXPECT_EQ(program.asked, "panel");
    EXPECT_EQ(orvel({"doctor"}), 7);
    EXPECT_EQ(program.asked, "doctor");
    EXPECT_EQ(orvel({"record", "--yes-record-keys", "steps.jsonl"}), 7);
    EXPECT_EQ(program.asked, "run steps.jsonl");
    EXPECT_EQ(said, "");
}

TEST_F(SessionCommandTest, NamesTheCommandThatWasUsedWronglyAndItsHelp) {
    EXPECT_EQ(orvel({"doctor", "--fast"}), 2);
    EXPECT_EQ(said,
              "orvel doctor: The following argument was not expected: --fast\n"
              "Run 'orvel doctor --help' for more information.\n");
    EXPECT_EQ(orvel({"record"}), 2);
    EXPECT_THAT(said, StartsWith("orvel record: FILE is required\n"));
    EXPECT_EQ(program.asked, "");
}

TEST_F(SessionCommandTest, RecordsNobodyWhoDidNotAgree) {
    EXPECT_EQ(orvel({"record", "steps.jsonl"}), 2);
    EXPECT_THAT(said, StartsWith("orvel: record writes everything that is typed"));
    EXPECT_EQ(program.asked, "");
}

}  // namespace
}  // namespace orvel
