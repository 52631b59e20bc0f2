#include "platform/qt/qt_run_loop.hpp"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace orvel::qt {
namespace {

using namespace std::chrono_literals;

class QtRunLoopTest : public testing::Test {
protected:
    /// Runs the loop until a task quits it; a loop that nobody quits fails the test.
    void run() {
        const auto deadline = loop.after(10s, [this] { loop.quit(1); });
        ASSERT_EQ(loop.run(), 0) << "the loop was not quit in time";
    }

    QtRunLoop loop;
};

TEST_F(QtRunLoopTest, RunsPostedTasksInOrder) {
    std::vector<int> order;
    for (int i = 0; i < 3; ++i) loop.post([&order, i] { order.push_back(i); });
    loop.post([this] { loop.quit(); });
    run();
    EXPECT_EQ(order, (std::vector{0, 1, 2}));
}

TEST_F(QtRunLoopTest, FinishesWorkThatWaitsForTheMainThread) {
    std::promise<void> begun;
    std::atomic<bool> isDone = false;
    loop.background([&] {
        begun.set_value();
        std::promise<void> answered;
        loop.post([&answered] { answered.set_value(); });
        answered.get_future().wait();
        isDone = true;
    });
    begun.get_future().wait();
    loop.finishBackground();
    EXPECT_TRUE(isDone);
}

TEST_F(QtRunLoopTest, KeepsTheOrderOfEachPostingThread) {
    constexpr int kPosts = 5000;
    std::array<int, 2> next{};
    std::atomic<int> left = 2 * kPosts;
    bool inOrder = true;
    const auto poster = [&](std::size_t who) {
        for (int i = 0; i < kPosts; ++i) {
            loop.post([&, who, i] {
                inOrder = inOrder && next[who]++ == i;
                if (--left == 0) loop.quit();
            });
        }
    };
    std::thread first(poster, 0);
    std::thread second(poster, 1);
    run();
    first.join();
    second.join();
    EXPECT_TRUE(inOrder);
    EXPECT_EQ(left, 0);
}

TEST_F(QtRunLoopTest, RunsADelayedTaskNotBeforeItsTime) {
    const Instant begin = loop.now();
    Instant ran{};
    loop.postAfter(30ms, [&] {
        ran = loop.now();
        loop.quit();
    });
    run();
    EXPECT_GE(ran - begin, 30ms);
}

TEST_F(QtRunLoopTest, RunsBackgroundWorkOnAnotherThread) {
    const auto mainThread = std::this_thread::get_id();
    std::thread::id workThread;
    std::thread::id doneThread;
    loop.backgroundAfter(1ms, [&] {
        workThread = std::this_thread::get_id();
        loop.post([&] {
            doneThread = std::this_thread::get_id();
            loop.quit();
        });
    });
    run();
    EXPECT_NE(workThread, mainThread);
    EXPECT_EQ(doneThread, mainThread);
}

TEST_F(QtRunLoopTest, BlockedBackgroundWorkDoesNotHoldUpTheNext) {
    // The blocked work may see its release only after the test has returned.
    const auto isReleased = std::make_shared<std::atomic<bool>>(false);
    loop.background([isReleased] {
        while (!*isReleased) std::this_thread::yield();
    });
    loop.background([&] { loop.quit(); });
    run();
    *isReleased = true;
}

TEST_F(QtRunLoopTest, RepeatsATimerUntilItIsDestroyed) {
    int ticks = 0;
    std::unique_ptr<Timer> timer = loop.every(2ms, "test", [&] {
        if (++ticks < 3) return;
        timer.reset();
        loop.postAfter(20ms, [this] { loop.quit(); });
    });
    run();
    EXPECT_EQ(ticks, 3);
}

TEST_F(QtRunLoopTest, ATimerDestroyedBeforeItsTimeNeverRuns) {
    bool hasRun = false;
    loop.after(5ms, [&] { hasRun = true; }).reset();
    loop.postAfter(20ms, [this] { loop.quit(); });
    run();
    EXPECT_FALSE(hasRun);
}

TEST_F(QtRunLoopTest, ATimerMayOutliveTheLoop) {
    auto other = std::make_unique<QtRunLoop>();
    const auto timer = other->every(1ms, "test", [] { ADD_FAILURE() << "the loop is gone"; });
    other.reset();
    loop.postAfter(10ms, [this] { loop.quit(); });
    run();
}

TEST_F(QtRunLoopTest, DropsWhatIsQueuedWhenItIsDestroyed) {
    auto other = std::make_unique<QtRunLoop>();
    other->post([] { ADD_FAILURE() << "the loop is gone"; });
    other.reset();
    loop.post([this] { loop.quit(); });
    run();
}

TEST_F(QtRunLoopTest, TellsWhenADescriptorCanBeRead) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    std::string received;
    std::unique_ptr<ReadableWatch> watch = loop.watchReadable(ends[0], [&] {
        std::array<char, 8> buffer{};
        const ssize_t count = read(ends[0], buffer.data(), buffer.size());
        received.assign(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        watch.reset();
        loop.quit();
    });
    loop.post([&] { EXPECT_EQ(write(ends[1], "go", 2), 2); });
    run();
    EXPECT_EQ(received, "go");
    close(ends[0]);
    close(ends[1]);
}

TEST_F(QtRunLoopTest, TimeNeverGoesBack) {
    const Instant first = loop.now();
    EXPECT_GE(loop.now(), first);
}

}  // namespace
}  // namespace orvel::qt

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
