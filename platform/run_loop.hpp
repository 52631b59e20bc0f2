#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

namespace orvel {

using Duration = std::chrono::microseconds;
/// Time since the run loop began; never goes back.
using Instant = std::chrono::microseconds;
using Task = std::function<void()>;

/// Keeps a timer running; destroying it cancels the timer, also from inside its own task.
class Timer {
public:
    virtual ~Timer() = default;
};

/// The only source of time, delay and background work. Tasks run on the main thread unless said
/// otherwise; every method may be called on any thread but for the two that make timers.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    [[nodiscard]] virtual Instant now() const = 0;

    /// Runs `task` on the main queue, after everything queued before it.
    virtual void post(Task task) = 0;
    virtual void postAfter(Duration delay, Task task) = 0;

    /// Runs `work` on a background queue, where blocking calls are allowed.
    virtual void background(Task work) = 0;
    virtual void backgroundAfter(Duration delay, Task work) = 0;

    /// Runs `task` every `interval` while the timer lives. `owner` names the timer in transcripts.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(Duration interval, std::string_view owner,
                                                       Task task) = 0;
    /// Runs `task` once after `delay` unless the timer is destroyed before.
    [[nodiscard]] virtual std::unique_ptr<Timer> after(Duration delay, Task task) = 0;
};

}  // namespace orvel
