#pragma once

#include <chrono>

namespace orvel::x11 {

/// How often the watched process shows that it lives, and how the watcher counts silence.
inline constexpr std::chrono::milliseconds kHeartbeatInterval{300};
inline constexpr std::chrono::milliseconds kSilenceSlice{500};
inline constexpr int kSilentSlicesOfTheDead = 3;

/// Decides from slices of listening whether the watched process hangs. A machine that stood still
/// as a whole costs one slice only, since the watcher stood still with it.
class Heartbeat {
public:
    void beat() { silentSlices_ = 0; }
    void silentSlice() { ++silentSlices_; }
    [[nodiscard]] bool hasStopped() const { return silentSlices_ >= kSilentSlicesOfTheDead; }

private:
    int silentSlices_ = 0;
};

}  // namespace orvel::x11
