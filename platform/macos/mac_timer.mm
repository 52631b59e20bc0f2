#include "platform/macos/mac_timer.hpp"

#include "platform/macos/mac_cf_ref.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

namespace {

double seconds(Duration duration) { return std::chrono::duration<double>(duration).count(); }

class MacTimer final : public Timer {
public:
    MacTimer(Duration delay, Duration interval, Task task)
        : task_(std::make_shared<Task>(std::move(task))) {
        CFRunLoopTimerContext context{};
        context.info = this;
        timer_ = CfRef(CFRunLoopTimerCreate(kCFAllocatorDefault,
                                            CFAbsoluteTimeGetCurrent() + seconds(delay),
                                            seconds(interval), 0, 0, fired, &context));
        CFRunLoopAddTimer(CFRunLoopGetMain(), timer_.get(), kCFRunLoopCommonModes);
    }
    ~MacTimer() override { CFRunLoopTimerInvalidate(timer_.get()); }
    MacTimer(const MacTimer&) = delete;
    MacTimer& operator=(const MacTimer&) = delete;

private:
    static void fired(CFRunLoopTimerRef, void* info) {
        // The task may destroy this timer while it runs.
        const std::shared_ptr<Task> task = static_cast<MacTimer*>(info)->task_;
        @autoreleasepool {
            (*task)();
        }
    }

    std::shared_ptr<Task> task_;
    CfRef<CFRunLoopTimerRef> timer_;
};

}  // namespace

std::unique_ptr<Timer> startTimer(Duration delay, Duration interval, Task task) {
    return std::make_unique<MacTimer>(delay, interval, std::move(task));
}

}  // namespace orvel::macos
