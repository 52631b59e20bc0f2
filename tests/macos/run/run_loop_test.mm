#include "platform/run_loop.hpp"

#include "platform/macos/mac_factories.hpp"
#include "tests/macos/run/mac_test.hpp"

#include <atomic>

namespace orvel::macos {
namespace {

using namespace std::chrono_literals;

constexpr int kUserInitiated = 0x19;

class MacRunLoopTest : public MacTest {
protected:
    std::unique_ptr<RunLoop> loop = makeRunLoop();
    std::atomic<bool> isDone = false;

    [[nodiscard]] bool comesToAnEnd() const {
        return fake::runUntil([this] { return isDone.load(); });
    }
};

TEST_F(MacRunLoopTest, PostedTasksRunOnTheMainThread) {
    std::atomic<bool> isMain = false;
    loop->post([&] {
        isMain = fake::isMainThread();
        isDone = true;
    });
    EXPECT_TRUE(comesToAnEnd());
    EXPECT_TRUE(isMain);
}

TEST_F(MacRunLoopTest, BackgroundWorkRunsElsewhereWithTheQualityOfWhatAPersonWaitsFor) {
    std::atomic<bool> isMain = true;
    std::atomic<int> quality = 0;
    loop->background([&] {
        isMain = fake::isMainThread();
        quality = fake::currentQuality();
        isDone = true;
    });
    EXPECT_TRUE(comesToAnEnd());
    EXPECT_FALSE(isMain);
    EXPECT_EQ(quality, kUserInitiated);
}

TEST_F(MacRunLoopTest, TimersGoOnWhileAMenuIsTracked) {
    int ticks = 0;
    const auto timer = loop->every(100ms, "test", [&] { ++ticks; });
    fake::advance(1000ms, fake::Mode::tracking);
    EXPECT_EQ(ticks, 10);
}

TEST_F(MacRunLoopTest, ATimerMayDestroyItselfInItsTask) {
    int ticks = 0;
    std::unique_ptr<Timer> timer;
    timer = loop->every(100ms, "test", [&] {
        ++ticks;
        timer.reset();
    });
    fake::advance(1000ms);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(fake::liveTimers(), 0);
}

TEST_F(MacRunLoopTest, NothingThatIsQueuedRunsAfterItsEnd) {
    bool hasRun = false;
    loop->post([&] { hasRun = true; });
    loop->postAfter(10ms, [&] { hasRun = true; });
    loop.reset();
    fake::advance(100ms);
    EXPECT_FALSE(hasRun);
}

}  // namespace
}  // namespace orvel::macos
