#include "platform/memory/memory_run_loop.hpp"

#include <algorithm>
#include <cassert>
#include <utility>

namespace orvel::memory {

namespace {

template <typename Scheduled>
bool runsLater(const Scheduled& a, const Scheduled& b) {
    return std::pair(a.due, a.order) > std::pair(b.due, b.order);
}

Task takeFirst(std::deque<Task>& queue) {
    Task first = std::move(queue.front());
    queue.pop_front();
    return first;
}

double seconds(Duration duration) { return static_cast<double>(duration.count()) / 1e6; }

}  // namespace

class MemoryRunLoop::Token final : public Timer {
public:
    explicit Token(std::shared_ptr<TimerState> state) : state_(std::move(state)) {}
    ~Token() override { state_->isCancelled = true; }

private:
    std::shared_ptr<TimerState> state_;
};

void MemoryRunLoop::post(Task task) { main_.push_back(std::move(task)); }

void MemoryRunLoop::postAfter(Duration delay, Task task) {
    if (delay <= Duration::zero()) return post(std::move(task));
    schedule(delay, false, std::move(task));
}

void MemoryRunLoop::background(Task work) { background_.push_back(std::move(work)); }

void MemoryRunLoop::backgroundAfter(Duration delay, Task work) {
    if (delay <= Duration::zero()) return background(std::move(work));
    schedule(delay, true, std::move(work));
}

std::unique_ptr<Timer> MemoryRunLoop::every(Duration interval, std::string_view owner, Task task) {
    assert(interval > Duration::zero());
    effects_.effect("timer")
        ->beginObject()
        .member("interval", seconds(interval))
        .member("repeats", true)
        .member("owner", owner)
        .endObject();
    auto state = std::make_shared<TimerState>(TimerState{std::move(task), interval});
    scheduleOccurrence(state);
    return std::make_unique<Token>(std::move(state));
}

std::unique_ptr<Timer> MemoryRunLoop::after(Duration delay, Task task) {
    auto state = std::make_shared<TimerState>(TimerState{std::move(task), Duration::zero()});
    postAfter(delay, [state] {
        if (!state->isCancelled) state->task();
    });
    return std::make_unique<Token>(std::move(state));
}

void MemoryRunLoop::scheduleOccurrence(const std::shared_ptr<TimerState>& state) {
    schedule(state->interval, false, [this, state] {
        if (state->isCancelled) return;
        scheduleOccurrence(state);
        state->task();
    });
}

void MemoryRunLoop::schedule(Duration delay, bool inBackground, Task task) {
    scheduled_.push_back({now_ + delay, nextOrder_++, inBackground, std::move(task)});
    std::push_heap(scheduled_.begin(), scheduled_.end(), runsLater<Scheduled>);
}

void MemoryRunLoop::drain() {
    while (!main_.empty() || !background_.empty()) {
        while (!main_.empty()) takeFirst(main_)();
        while (!background_.empty()) runInBackground(takeFirst(background_));
    }
}

void MemoryRunLoop::advance(Duration duration) {
    const Instant end = now_ + duration;
    while (isDue(end)) {
        moveTo(scheduled_.front().due);
        runNextScheduled();
        drain();
    }
    moveTo(end);
}

bool MemoryRunLoop::isDue(Instant time) const {
    return !scheduled_.empty() && scheduled_.front().due <= time;
}

void MemoryRunLoop::runNextScheduled() {
    std::pop_heap(scheduled_.begin(), scheduled_.end(), runsLater<Scheduled>);
    const Scheduled next = std::move(scheduled_.back());
    scheduled_.pop_back();
    if (next.inBackground) {
        runInBackground(next.task);
    } else {
        next.task();
    }
}

void MemoryRunLoop::runInBackground(const Task& work) {
    effects_.setInBackground(true);
    work();
    effects_.setInBackground(false);
}

void MemoryRunLoop::moveTo(Instant time) {
    now_ = time;
    effects_.setTime(time);
}

}  // namespace orvel::memory
