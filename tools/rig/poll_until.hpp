#pragma once

#include <chrono>
#include <poll.h>
#include <type_traits>
#include <utility>

namespace orvel::rig {

/// How long the rig waits for something that normally takes milliseconds. Long, because a
/// machine under load must not fail a test; nothing ever waits this long when all is well.
constexpr std::chrono::milliseconds kPatience{10'000};

/// What a wait ended with.
template <class T>
struct Polled {
    T last;         ///< what the probe returned last
    bool accepted;  ///< false: the deadline passed first

    explicit operator bool() const { return accepted; }
};

/// Calls `probe` until `accept` says yes to what it returned, or until the limit has passed.
template <class Probe, class Accept>
auto pollUntil(const Probe& probe, const Accept& accept,
               std::chrono::milliseconds limit = kPatience)
    -> Polled<std::decay_t<decltype(probe())>> {
    constexpr int kPauseMs = 2;
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (true) {
        auto seen = probe();
        if (accept(std::as_const(seen))) {
            return {std::move(seen), true};
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return {std::move(seen), false};
        }
        ::poll(nullptr, 0, kPauseMs);
    }
}

/// The same for a plain condition.
template <class Condition>
bool pollUntil(const Condition& condition, std::chrono::milliseconds limit = kPatience) {
    return pollUntil(
               condition, [](bool yes) { return yes; }, limit)
        .accepted;
}

}  // namespace orvel::rig
