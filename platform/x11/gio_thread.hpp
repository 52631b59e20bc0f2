#pragma once

#include <functional>
#include <memory>

namespace orvel::x11 {

/// The thread on which everything of GLib that talks back happens: bus signals, file monitors.
/// The main thread never waits for it; what it learns is handed over by whoever asked.
class GioThread {
public:
    GioThread();
    /// Runs what was posted before, then ends the thread.
    ~GioThread();
    GioThread(const GioThread&) = delete;
    GioThread& operator=(const GioThread&) = delete;

    /// Runs `work` there, with the thread's own context as the default one. Any thread.
    void post(std::function<void()> work);
    /// Like `post`, and waits for its end. Not from the thread itself.
    void run(const std::function<void()>& work);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orvel::x11
