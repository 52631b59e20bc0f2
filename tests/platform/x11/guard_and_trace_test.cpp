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

TEST(Heartbeat, StopsOnlyAfterSeveralSilentSlicesInARow) {
    Heartbeat heart;
    for (int slice = 1; slice < kSilentSlicesOfTheDead; ++slice) heart.silentSlice();
    EXPECT_FALSE(heart.hasStopped());
    heart.beat();
    for (int slice = 1; slice < kSilentSlicesOfTheDead; ++slice) heart.silentSlice();
    EXPECT_FALSE(heart.hasStopped()) << "a beat in between begins anew";
    heart.silentSlice();
    EXPECT_TRUE(heart.hasStopped());
}

TEST(Heartbeat, AHangIsNoticedWithinTwoSecondsAndABusyMomentIsNone) {
    EXPECT_LE(kSilenceSlice * kSilentSlicesOfTheDead, std::chrono::seconds(2));
    EXPECT_GT(kSilenceSlice, kHeartbeatInterval);
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
