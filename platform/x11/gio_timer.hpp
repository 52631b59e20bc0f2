#pragma once

#include <chrono>
#include <functional>
#include <glib.h>

namespace orvel::x11 {

/// Runs `task` once after `delay` on the context of the thread that made it, unless it is destroyed
/// before. Belongs to that thread.
class GioTimer {
public:
    GioTimer(std::chrono::milliseconds delay, std::function<void()> task);
    ~GioTimer();
    GioTimer(const GioTimer&) = delete;
    GioTimer& operator=(const GioTimer&) = delete;

private:
    std::function<void()> task_;
    GSource* source_;
};

}  // namespace orvel::x11
