#pragma once

#include "platform/run_loop.hpp"

#include <memory>
#include <string_view>

namespace orvel::qt {

/// Watches a file descriptor; stops when destroyed, also from inside its own handler.
class ReadableWatch {
public:
    virtual ~ReadableWatch() = default;
};

/// The run loop over Qt's event loop. Built on the main thread after the application object of
/// Qt, and destroyed before it. What is still queued when it is destroyed never runs; background
/// work that has begun is waited for.
class QtRunLoop final : public RunLoop {
public:
    QtRunLoop();
    ~QtRunLoop() override;
    QtRunLoop(const QtRunLoop&) = delete;
    QtRunLoop& operator=(const QtRunLoop&) = delete;

    [[nodiscard]] Instant now() const override;
    void post(Task task) override;
    void postAfter(Duration delay, Task task) override;
    void background(Task work) override;
    void backgroundAfter(Duration delay, Task work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(Duration interval, std::string_view owner,
                                               Task task) override;
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Task task) override;

    /// Runs `handler` on the main thread whenever `fd` has something to read. The handler reads
    /// until nothing is left; `fd` stays open while the watch lives.
    [[nodiscard]] std::unique_ptr<ReadableWatch> watchReadable(int fd, Task handler);

    /// Runs until `quit`; returns the exit status given to it. Main thread.
    int run();
    /// Ends `run` after the task that is running now. Any thread.
    void quit(int status = 0);
    /// Returns when no background work runs any more; what has not begun is dropped. To be called
    /// after `run`, before what the work uses is destroyed: events are handled meanwhile, since
    /// the work may wait for the main thread.
    void finishBackground();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orvel::qt
