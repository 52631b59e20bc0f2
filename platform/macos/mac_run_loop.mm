#include "platform/run_loop.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_timer.hpp"

#import <Foundation/Foundation.h>

#include <condition_variable>
#include <mutex>

namespace orvel::macos {

namespace {

using Clock = std::chrono::steady_clock;

dispatch_time_t fromNow(Duration delay) {
    return dispatch_time(DISPATCH_TIME_NOW,
                         std::chrono::duration_cast<std::chrono::nanoseconds>(delay).count());
}

/// A person waits for what is done in the background, be it only for the Dock to go away.
dispatch_queue_t backgroundQueue() {
    return dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0);
}

/// Blocks that are queued cannot be taken back: they ask here whether they may still run.
class Life {
public:
    [[nodiscard]] bool begin() {
        const std::lock_guard lock(mutex_);
        if (!isOver_) ++working_;
        return !isOver_;
    }
    void end() {
        const std::lock_guard lock(mutex_);
        --working_;
        ended_.notify_all();
    }
    [[nodiscard]] bool isOver() const {
        const std::lock_guard lock(mutex_);
        return isOver_;
    }
    /// Lets nothing begin any more and waits for the work that has begun.
    void close() {
        std::unique_lock lock(mutex_);
        isOver_ = true;
        ended_.wait(lock, [this] { return working_ == 0; });
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable ended_;
    bool isOver_ = false;
    int working_ = 0;
};

class MacRunLoop final : public RunLoop {
public:
    ~MacRunLoop() override { life_->close(); }

    [[nodiscard]] Instant now() const override {
        return std::chrono::duration_cast<Instant>(Clock::now() - begin_);
    }

    void post(Task task) override {
        dispatch_async(dispatch_get_main_queue(), onMain(std::move(task)));
    }
    void postAfter(Duration delay, Task task) override {
        dispatch_after(fromNow(delay), dispatch_get_main_queue(), onMain(std::move(task)));
    }

    void background(Task work) override {
        dispatch_async(backgroundQueue(), inBackground(std::move(work)));
    }
    void backgroundAfter(Duration delay, Task work) override {
        dispatch_after(fromNow(delay), backgroundQueue(), inBackground(std::move(work)));
    }

    [[nodiscard]] std::unique_ptr<Timer> every(Duration interval, std::string_view,
                                               Task task) override {
        return startTimer(interval, interval, std::move(task));
    }
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Task task) override {
        return startTimer(delay, Duration::zero(), std::move(task));
    }

private:
    dispatch_block_t onMain(Task task) const {
        const std::shared_ptr<Life> life = life_;
        return [^{
          if (life->isOver()) return;
          @autoreleasepool {
              task();
          }
        } copy];
    }

    dispatch_block_t inBackground(Task work) const {
        const std::shared_ptr<Life> life = life_;
        return [^{
          if (!life->begin()) return;
          @autoreleasepool {
              work();
          }
          life->end();
        } copy];
    }

    Clock::time_point begin_ = Clock::now();
    std::shared_ptr<Life> life_ = std::make_shared<Life>();
};

}  // namespace

std::unique_ptr<RunLoop> makeRunLoop() { return std::make_unique<MacRunLoop>(); }

}  // namespace orvel::macos
