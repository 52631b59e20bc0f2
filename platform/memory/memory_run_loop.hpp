#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/run_loop.hpp"

#include <cstdint>
#include <deque>
#include <vector>

namespace orvel::memory {

/// Virtual time on one thread: it stands still until it is advanced.
class MemoryRunLoop final : public RunLoop {
public:
    explicit MemoryRunLoop(EffectLog& effects) : effects_(effects) {}

    [[nodiscard]] Instant now() const override { return now_; }
    void post(Task task) override;
    void postAfter(Duration delay, Task task) override;
    void background(Task work) override;
    void backgroundAfter(Duration delay, Task work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(Duration interval, std::string_view owner,
                                               Task task) override;
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Task task) override;

    /// Runs everything that is due now: the main queue in order, then the background queue in
    /// order, until both are empty.
    void drain();
    /// Lets time pass: what becomes due runs in order of its time, ties in order of scheduling,
    /// and everything is drained after each.
    void advance(Duration duration);

private:
    struct Scheduled {
        Instant due;
        std::uint64_t order;
        bool inBackground;
        Task task;
    };
    /// What a timer's token and its next occurrence share.
    struct TimerState {
        Task task;
        Duration interval;
        bool isCancelled = false;
    };
    class Token;

    void schedule(Duration delay, bool inBackground, Task task);
    void scheduleOccurrence(const std::shared_ptr<TimerState>& state);
    [[nodiscard]] bool isDue(Instant time) const;
    void runNextScheduled();
    void runInBackground(const Task& work);
    void moveTo(Instant time);

    EffectLog& effects_;
    Instant now_{0};
    std::uint64_t nextOrder_ = 0;
    std::deque<Task> main_;
    std::deque<Task> background_;
    std::vector<Scheduled> scheduled_;  ///< a heap, the next one on top
};

}  // namespace orvel::memory
