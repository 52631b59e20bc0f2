#include "platform/x11/running_sessions.hpp"
#include "tests/platform/x11_files/process.hpp"
#include "tests/support/program_run.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What `orvel prefs` says while an engine runs in a session of the same user.

namespace orvel::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class RunningEngineCli : public ::testing::Test {
protected:
    ScratchHome home;

    /// Stands for the resident program: its note is all that others see of it.
    static void reside(int pipe, bool isOn, bool isPaused) {
        const Result<x11::SessionNote> note = x11::SessionNote::claim(":7");
        if (note) note.value().update(isOn, isPaused);
        tell(pipe, note ? 1 : 0);
        pause();
    }
    ProgramRun prefs(const std::vector<std::string>& words) {
        std::vector<std::string> command{builtProgram("orvel"), "prefs"};
        command.insert(command.end(), words.begin(), words.end());
        return runProgram(command);
    }
};

TEST_F(RunningEngineCli, AnEngineThatIsOnNeedsNoWord) {
    Process resident([](int pipe) { reside(pipe, true, false); });
    ASSERT_EQ(resident.next(), 1);
    const ProgramRun run = prefs({"set", "card_snap", "true"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, IsEmpty());
}

TEST_F(RunningEngineCli, AnEngineThatIsOffIsNamedWithTheWayToTurnItOn) {
    Process resident([](int pipe) { reside(pipe, false, false); });
    ASSERT_EQ(resident.next(), 1);
    for (const auto& words : std::vector<std::vector<std::string>>{{"set", "card_snap", "true"},
                                                                   {"unset", "card_snap"}}) {
        const ProgramRun run = prefs(words);
        EXPECT_EQ(run.status, 0) << "the setting is stored all the same";
        EXPECT_THAT(run.err,
                    AllOf(HasSubstr("display :7"), HasSubstr("off"), HasSubstr("orvel panel")));
    }
    EXPECT_THAT(prefs({"get", "card_snap"}).err, IsEmpty());
}

TEST_F(RunningEngineCli, AnEngineThatIsPausedIsNamedWithTheWayToResumeIt) {
    Process resident([](int pipe) { reside(pipe, true, true); });
    ASSERT_EQ(resident.next(), 1);
    EXPECT_THAT(prefs({"set", "card_snap", "true"}).err,
                AllOf(HasSubstr("paused"), HasSubstr("Backspace"), Not(HasSubstr("off"))));
}

TEST_F(RunningEngineCli, AnEngineThatEndedCountsNoMore) {
    Process resident([](int pipe) { reside(pipe, false, false); });
    ASSERT_EQ(resident.next(), 1);
    resident.end(SIGKILL);
    EXPECT_THAT(prefs({"set", "card_snap", "true"}).err, IsEmpty());
}

TEST_F(RunningEngineCli, SettingsThatTakeEffectLaterSaySo) {
    EXPECT_THAT(prefs({"set", "cardAltMenu", "false"}).err, IsEmpty()) << "nothing runs";
    Process resident([](int pipe) { reside(pipe, true, false); });
    ASSERT_EQ(resident.next(), 1);
    EXPECT_THAT(prefs({"set", "cardAltMenu", "false"}).err,
                HasSubstr("when the settings panel opens"));
    EXPECT_THAT(prefs({"set", "card_taskbar", "true"}).err, HasSubstr("starts again"));
}

}  // namespace
}  // namespace orvel::test
