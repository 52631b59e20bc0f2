#include "platform/x11/guard_process.hpp"
#include "platform/x11/heartbeat.hpp"
#include "platform/x11/trace_file.hpp"
#include "tests/platform/x11_files/process.hpp"
#include "tests/support/poll_until.hpp"
#include "tests/support/scratch_home.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

namespace orvel::x11 {
namespace {

using test::eventually;

constexpr Heartbeat::Time kNothing{0};

int silentSlicesUntilStopped(Heartbeat heart, Heartbeat::Time waitedInEach) {
    int slices = 0;
    for (; !heart.hasStopped() && slices < 100; ++slices) heart.silentSlice(waitedInEach);
    return slices;
}

TEST(Heartbeat, StopsOnlyAfterSeveralSilentSlicesInARow) {
    Heartbeat heart;
    EXPECT_EQ(silentSlicesUntilStopped(heart, kNothing), 3);
    heart.silentSlice(kNothing);
    heart.silentSlice(kNothing);
    heart.beat();
    EXPECT_EQ(silentSlicesUntilStopped(heart, kNothing), 3) << "a beat in between begins anew";
}

TEST(Heartbeat, AHangIsNoticedWithinTwoSecondsAndABusyMomentIsNone) {
    EXPECT_LE(kSilenceSlice * silentSlicesUntilStopped({}, kNothing), std::chrono::seconds(2));
    EXPECT_GT(kSilenceSlice, kHeartbeatInterval);
}

TEST(Heartbeat, AProcessThatGetsNoProcessorIsGivenTheTimeThatItLost) {
    EXPECT_EQ(silentSlicesUntilStopped({}, kSilenceSlice / 2), 6);
    Heartbeat starved;
    for (int slice = 0; slice < 100; ++slice) starved.silentSlice(kSilenceSlice);
    EXPECT_FALSE(starved.hasStopped());
    // The kernel counts a wait when it is over, which may be in a later slice.
    starved.silentSlice(kSilenceSlice * 2);
    EXPECT_EQ(silentSlicesUntilStopped(starved, kNothing), 3);
}

bool isThere(int process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string id;
    std::string name;
    std::string status;
    return file >> id >> name >> status && status != "Z";
}

/// A display that nobody serves: there is nothing to release, and the guard watches all the same.
constexpr const char* kNoDisplay = ":4711";

TEST(GuardProcess, EndsWithTheOneItWatchesAndNotBySignalsForAll) {
    int watcher = 0;
    {
        GuardProcess guard = GuardProcess::start(kNoDisplay).value();
        watcher = guard.processId();
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) ::kill(watcher, signal);
        EXPECT_TRUE(guard.beat());
        EXPECT_TRUE(isThere(watcher));
    }
    EXPECT_FALSE(isThere(watcher));
}

TEST(GuardProcess, IsMissedOnceItIsGone) {
    GuardProcess guard = GuardProcess::start(kNoDisplay).value();
    ::kill(guard.processId(), SIGKILL);
    EXPECT_TRUE(eventually([&] { return guard.beat(); }, false));
}

TEST(GuardProcess, EndsAProcessThatHangs) {
    test::Process hanging([](int pipe) {
        const auto guard = GuardProcess::start(kNoDisplay);
        test::tell(pipe, guard.ok() ? 1 : 0);
        while (true) ::pause();
    });
    ASSERT_EQ(hanging.next(), 1);
    const int status = hanging.wait();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
}

TEST(TraceFile, LiesInTheStateFolderAndBeginsAnewAtOneMebibyte) {
    const test::ScratchHome home;
    EXPECT_EQ(TraceFile::defaultPath(), home.at(".local/state/orvel/trace.log"));
    TraceFile file(TraceFile::defaultPath());
    const std::string line(1023, 'k');
    constexpr int kLinesOfAMebibyte = 1024;
    for (int i = 0; i < kLinesOfAMebibyte; ++i) file.write(line);
    EXPECT_FALSE(home.has(".local/state/orvel/trace.log.1"));
    file.write("next");
    EXPECT_EQ(std::filesystem::file_size(home.at(".local/state/orvel/trace.log.1")), 1U << 20);
    EXPECT_EQ(home.read(".local/state/orvel/trace.log"), "next\n");
    EXPECT_EQ(home.mode(".local/state/orvel/trace.log"), 0600U);
    EXPECT_EQ(home.mode(".local/state/orvel/trace.log.1"), 0600U);
}

TEST(TraceFile, IsNotWrittenThroughALink) {
    const test::ScratchHome home;
    home.write("precious", "text");
    std::filesystem::create_directories(home.at(".local/state/orvel"));
    std::filesystem::create_symlink(home.at("precious"), TraceFile::defaultPath());
    TraceFile(TraceFile::defaultPath()).write("typed");
    EXPECT_EQ(home.read("precious"), "text");
}

}  // namespace
}  // namespace orvel::x11
