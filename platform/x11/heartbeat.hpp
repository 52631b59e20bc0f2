#pragma once

#include <algorithm>
#include <chrono>

namespace orvel::x11 {

/// How often the watched process shows that it lives, how long the watcher listens at a time, and
/// how much silence means that it hangs.
inline constexpr std::chrono::milliseconds kHeartbeatInterval{300};
inline constexpr std::chrono::milliseconds kSilenceSlice{500};
inline constexpr std::chrono::milliseconds kSilenceOfTheDead{1500};

/// Decides from slices of listening whether the watched process hangs. A machine that stood still
/// as a whole costs one slice only, since the watcher stood still with it; and a process that
/// waited for a processor meanwhile was kept from beating.
class Heartbeat {
public:
    using Time = std::chrono::nanoseconds;

    void beat() { silence_ = Time::zero(); }
    /// `waited`: how long the watched process has waited for a processor in this slice.
    void silentSlice(Time waited) { silence_ += std::max(kSilenceSlice - waited, Time::zero()); }
    [[nodiscard]] bool hasStopped() const { return silence_ >= kSilenceOfTheDead; }

private:
    Time silence_{};
};

}  // namespace orvel::x11
