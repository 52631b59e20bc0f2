#include "platform/x11/running_sessions.hpp"

#include "tests/platform/x11_files/process.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace orvel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class RunningSessions : public ::testing::Test {
protected:
    ScratchHome home;

    /// A resident that claims a display, tells whether it could, and stays.
    static void reside(int pipe, const std::string& display, bool isOn, bool isPaused) {
        Result<x11::SessionNote> note = x11::SessionNote::claim(display);
        if (note) {
            x11::SessionNote mine = std::move(note).value();
            mine.update(isOn, isPaused);
            tell(pipe, 1);
            pause();
        }
        tell(pipe, 0);
    }
};

TEST_F(RunningSessions, AreNoneAtFirst) {
    EXPECT_THAT(x11::runningSessions(), IsEmpty());
    EXPECT_FALSE(home.has("run/orvel"));
}

TEST_F(RunningSessions, TellTheirStateWhileTheyLive) {
    Process resident([](int pipe) { reside(pipe, ":7.0", true, false); });
    ASSERT_EQ(resident.next(), 1);
    const auto sessions = x11::runningSessions();
    ASSERT_THAT(sessions, SizeIs(1));
    EXPECT_EQ(sessions[0].display, ":7.0");
    EXPECT_EQ(sessions[0].process, resident.id());
    EXPECT_TRUE(sessions[0].isOn);
    EXPECT_FALSE(sessions[0].isPaused);
    EXPECT_EQ(home.mode("run/orvel"), 0700U);
    resident.end(SIGKILL);
    EXPECT_THAT(x11::runningSessions(), IsEmpty());
}

TEST_F(RunningSessions, AreOneForEachDisplay) {
    Process first([](int pipe) { reside(pipe, ":7", false, false); });
    Process other([](int pipe) { reside(pipe, "/tmp/launch-x/:0", false, true); });
    ASSERT_EQ(first.next(), 1);
    ASSERT_EQ(other.next(), 1);
    EXPECT_THAT(x11::runningSessions(), SizeIs(2));
    const Result<x11::SessionNote> second = x11::SessionNote::claim(":7");
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error(),
              "orvel already runs on display :7 (process " + std::to_string(first.id()) + ")");
    first.end(SIGKILL);
    EXPECT_TRUE(x11::SessionNote::claim(":7"));
}

TEST_F(RunningSessions, DamagedNotesAreSkipped) {
    Process resident([&](int pipe) { reside(pipe, ":7", true, false); });
    ASSERT_EQ(resident.next(), 1);
    home.write("run/orvel/session-:7", "not a note");
    home.write("run/orvel/session-:8", "{}");
    EXPECT_THAT(x11::runningSessions(), IsEmpty());
}

}  // namespace
}  // namespace orvel::test
