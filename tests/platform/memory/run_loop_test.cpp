#include "platform/memory/memory_run_loop.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::memory {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MemoryRunLoopTest : public ::testing::Test {
protected:
    EffectLog effects;
    MemoryRunLoop loop{effects};
    std::vector<std::string> ran;

    Task note(std::string name) {
        return [this, name = std::move(name)] { ran.push_back(name); };
    }
};

TEST_F(MemoryRunLoopTest, RunsTheMainQueueBeforeTheBackgroundQueue) {
    loop.background(note("background 1"));
    loop.post(note("main 1"));
    loop.background(note("background 2"));
    loop.post(note("main 2"));
    loop.drain();
    EXPECT_THAT(ran, ElementsAre("main 1", "main 2", "background 1", "background 2"));
}

TEST_F(MemoryRunLoopTest, DrainsWhatQueuedWorkQueues) {
    loop.post([this] {
        loop.background([this] {
            ran.emplace_back("background");
            loop.post(note("main again"));
        });
        loop.post(note("main"));
    });
    loop.drain();
    EXPECT_THAT(ran, ElementsAre("main", "background", "main again"));
}

TEST_F(MemoryRunLoopTest, FinishesTheBackgroundQueueBeforeItReturnsToTheMainQueue) {
    loop.background([this] { loop.post(note("main")); });
    loop.background(note("background 2"));
    loop.drain();
    EXPECT_THAT(ran, ElementsAre("background 2", "main"));
}

TEST_F(MemoryRunLoopTest, RunsNothingDelayedUntilTimePasses) {
    loop.postAfter(milliseconds(100), note("late"));
    loop.drain();
    EXPECT_THAT(ran, IsEmpty());
    loop.advance(microseconds(99999));
    EXPECT_THAT(ran, IsEmpty());
    loop.advance(microseconds(1));
    EXPECT_THAT(ran, ElementsAre("late"));
}

TEST_F(MemoryRunLoopTest, WorkWithoutDelayIsDueNow) {
    loop.postAfter(Duration::zero(), note("main"));
    loop.backgroundAfter(Duration::zero(), note("background"));
    loop.drain();
    EXPECT_THAT(ran, ElementsAre("main", "background"));
}

TEST_F(MemoryRunLoopTest, RunsInOrderOfDueTimeAndTiesInOrderOfScheduling) {
    loop.postAfter(milliseconds(20), note("20 first"));
    loop.postAfter(milliseconds(10), note("10"));
    loop.backgroundAfter(milliseconds(20), note("20 second"));
    loop.postAfter(milliseconds(20), note("20 third"));
    loop.advance(seconds(1));
    EXPECT_THAT(ran, ElementsAre("10", "20 first", "20 second", "20 third"));
}

TEST_F(MemoryRunLoopTest, DrainsAfterEachDueTask) {
    loop.postAfter(milliseconds(10), [this] { loop.background(note("queued by the first")); });
    loop.postAfter(milliseconds(10), note("second"));
    loop.advance(milliseconds(10));
    EXPECT_THAT(ran, ElementsAre("queued by the first", "second"));
}

TEST_F(MemoryRunLoopTest, ShowsTheDueTimeWhileATaskRuns) {
    Instant seen{0};
    loop.postAfter(milliseconds(300), [&] { seen = loop.now(); });
    loop.advance(seconds(2));
    EXPECT_EQ(seen, milliseconds(300));
    EXPECT_EQ(loop.now(), seconds(2));
}

TEST_F(MemoryRunLoopTest, ReachesWhatDueTasksSchedule) {
    loop.postAfter(milliseconds(100),
                   [this] { loop.postAfter(milliseconds(100), note("second")); });
    loop.advance(milliseconds(200));
    EXPECT_THAT(ran, ElementsAre("second"));
}

TEST_F(MemoryRunLoopTest, RepeatsATimerWhileItsTokenLives) {
    auto timer = loop.every(milliseconds(500), "clipboard", note("tick"));
    loop.advance(seconds(1));
    EXPECT_THAT(ran, ElementsAre("tick", "tick"));
    timer.reset();
    loop.advance(seconds(1));
    EXPECT_THAT(ran, ElementsAre("tick", "tick"));
}

TEST_F(MemoryRunLoopTest, ATimerMayCancelItselfFromItsOwnTask) {
    std::unique_ptr<Timer> timer = loop.every(seconds(1), "taskbar", [&] {
        ran.emplace_back("tick");
        timer.reset();
    });
    loop.advance(seconds(5));
    EXPECT_THAT(ran, ElementsAre("tick"));
}

TEST_F(MemoryRunLoopTest, ATimerWithoutRepetitionRunsOnceUnlessDestroyed) {
    auto kept = loop.after(milliseconds(400), note("kept"));
    auto dropped = loop.after(milliseconds(400), note("dropped"));
    dropped.reset();
    loop.advance(seconds(2));
    EXPECT_THAT(ran, ElementsAre("kept"));
}

TEST_F(MemoryRunLoopTest, TellsOfRepeatingTimersOnly) {
    const auto once = loop.after(seconds(1), note("once"));
    const auto repeating = loop.every(milliseconds(500), "clipboard", note("tick"));
    EXPECT_EQ(effects.text(),
              "{\"step\":0,\"t\":0,\"timer\":{\"interval\":0.5,\"repeats\":true,"
              "\"owner\":\"clipboard\"}}\n");
}

TEST_F(MemoryRunLoopTest, MarksWhatBackgroundWorkDoes) {
    const auto act = [this] { effects.effect("haptic")->value(true); };
    loop.background(act);
    loop.backgroundAfter(milliseconds(1), act);
    loop.drain();
    loop.advance(milliseconds(1));
    loop.post(act);
    loop.drain();
    EXPECT_EQ(effects.text(),
              "{\"step\":0,\"t\":0,\"haptic\":true,\"queue\":\"background\"}\n"
              "{\"step\":0,\"t\":0.001,\"haptic\":true,\"queue\":\"background\"}\n"
              "{\"step\":0,\"t\":0.001,\"haptic\":true}\n");
}

}  // namespace
}  // namespace orvel::memory
