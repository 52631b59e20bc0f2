#pragma once

#include "platform/run_loop.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orvel::contract {

/// What every run loop does. `Harness`:
///     RunLoop& loop();
///     bool runUntil(std::function<bool()> isDone);   false when it takes too long
///     void runFor(Duration duration);
template <typename Harness>
class RunLoopContract : public ::testing::Test {
protected:
    Harness harness;
    RunLoop& loop = harness.loop();
    std::vector<std::string> ran;

    Task note(std::string name) {
        return [this, name = std::move(name)] { ran.push_back(name); };
    }
    [[nodiscard]] bool runUntilSize(std::size_t size) {
        return harness.runUntil([this, size] { return ran.size() >= size; });
    }
};

TYPED_TEST_SUITE_P(RunLoopContract);

TYPED_TEST_P(RunLoopContract, RunsPostedTasksInOrderAndNotAtOnce) {
    this->loop.post(this->note("first"));
    this->loop.post(this->note("second"));
    EXPECT_TRUE(this->ran.empty());
    ASSERT_TRUE(this->runUntilSize(2));
    EXPECT_THAT(this->ran, ::testing::ElementsAre("first", "second"));
}

TYPED_TEST_P(RunLoopContract, RunsATaskThatATaskPostsAfterThoseQueuedBefore) {
    this->loop.post([this] { this->loop.post(this->note("posted by the first")); });
    this->loop.post(this->note("second"));
    ASSERT_TRUE(this->runUntilSize(2));
    EXPECT_THAT(this->ran, ::testing::ElementsAre("second", "posted by the first"));
}

TYPED_TEST_P(RunLoopContract, RunsDelayedTasksInOrderOfTheirTime) {
    this->loop.postAfter(std::chrono::milliseconds(60), this->note("60"));
    this->loop.postAfter(std::chrono::milliseconds(20), this->note("20"));
    this->loop.post(this->note("now"));
    ASSERT_TRUE(this->runUntilSize(3));
    EXPECT_THAT(this->ran, ::testing::ElementsAre("now", "20", "60"));
}

TYPED_TEST_P(RunLoopContract, RunsNothingBeforeItsTime) {
    const Instant before = this->loop.now();
    Instant ranAt{0};
    this->loop.postAfter(std::chrono::milliseconds(30), [&] {
        ranAt = this->loop.now();
        this->ran.emplace_back("late");
    });
    ASSERT_TRUE(this->runUntilSize(1));
    EXPECT_GE(ranAt - before, std::chrono::milliseconds(30));
}

TYPED_TEST_P(RunLoopContract, BringsResultsOfBackgroundWorkBackToTheMainQueue) {
    this->loop.background([this] { this->loop.post(this->note("result")); });
    ASSERT_TRUE(this->runUntilSize(1));
}

TYPED_TEST_P(RunLoopContract, DelaysBackgroundWork) {
    const Instant before = this->loop.now();
    this->loop.backgroundAfter(std::chrono::milliseconds(30),
                               [this] { this->loop.post(this->note("late")); });
    ASSERT_TRUE(this->runUntilSize(1));
    EXPECT_GE(this->loop.now() - before, std::chrono::milliseconds(30));
}

TYPED_TEST_P(RunLoopContract, RepeatsATimerUntilItsTokenIsDestroyed) {
    auto timer = this->loop.every(std::chrono::milliseconds(10), "engine", this->note("tick"));
    ASSERT_TRUE(this->runUntilSize(3));
    timer.reset();
    const std::size_t ticks = this->ran.size();
    this->harness.runFor(std::chrono::milliseconds(50));
    EXPECT_EQ(this->ran.size(), ticks);
}

TYPED_TEST_P(RunLoopContract, LetsATimerCancelItselfFromItsOwnTask) {
    std::unique_ptr<Timer> timer;
    timer = this->loop.every(std::chrono::milliseconds(10), "engine", [&] {
        this->ran.emplace_back("tick");
        timer.reset();
    });
    ASSERT_TRUE(this->runUntilSize(1));
    this->harness.runFor(std::chrono::milliseconds(50));
    EXPECT_EQ(this->ran.size(), 1U);
}

TYPED_TEST_P(RunLoopContract, RunsATimerWithoutRepetitionOnce) {
    const auto timer = this->loop.after(std::chrono::milliseconds(10), this->note("once"));
    ASSERT_TRUE(this->runUntilSize(1));
    this->harness.runFor(std::chrono::milliseconds(50));
    EXPECT_EQ(this->ran.size(), 1U);
}

TYPED_TEST_P(RunLoopContract, ForgetsATimerThatIsDestroyedBeforeItsTime) {
    auto timer = this->loop.after(std::chrono::milliseconds(20), this->note("never"));
    timer.reset();
    this->harness.runFor(std::chrono::milliseconds(60));
    EXPECT_TRUE(this->ran.empty());
}

REGISTER_TYPED_TEST_SUITE_P(RunLoopContract, RunsPostedTasksInOrderAndNotAtOnce,
                            RunsATaskThatATaskPostsAfterThoseQueuedBefore,
                            RunsDelayedTasksInOrderOfTheirTime, RunsNothingBeforeItsTime,
                            BringsResultsOfBackgroundWorkBackToTheMainQueue, DelaysBackgroundWork,
                            RepeatsATimerUntilItsTokenIsDestroyed,
                            LetsATimerCancelItselfFromItsOwnTask, RunsATimerWithoutRepetitionOnce,
                            ForgetsATimerThatIsDestroyedBeforeItsTime);

}  // namespace orvel::contract
