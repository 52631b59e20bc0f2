#pragma once

#include "tests/support/poll_until.hpp"
#include "tools/rig/embedded_desktop.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace orvel::test {

/// How long a key takes from the device to the synthetic keyboard, through the tap.
class KeyDelays {
public:
    using Duration = std::chrono::steady_clock::duration;

    explicit KeyDelays(rig::EmbeddedDesktop& desktop) : desktop_(desktop) {}

    Duration of(const char* key) {
        const auto isOut = [&] {
            const auto down = desktop_.state().syntheticKeysDown();
            return std::find(down.begin(), down.end(), rig::PhysicalKey(key)) != down.end();
        };
        const auto begin = std::chrono::steady_clock::now();
        desktop_.keyboard().press(key);
        EXPECT_TRUE(rig::pollUntil(isOut)) << key;
        const auto taken = std::chrono::steady_clock::now() - begin;
        desktop_.keyboard().release(key);
        EXPECT_TRUE(rig::pollUntil([&] { return !isOut(); })) << key;
        return taken;
    }
    /// The median of several, which leaves out the moments in which the machine does other things.
    /// `before` is called before each of them.
    template <class Before>
    Duration median(Before before, std::size_t count = 15) {
        std::vector<Duration> times;
        for (std::size_t each = 0; each < count; ++each) {
            before();
            times.push_back(of("j"));
        }
        const auto middle = times.begin() + static_cast<std::ptrdiff_t>(count / 2);
        std::nth_element(times.begin(), middle, times.end());
        testing::Test::RecordProperty(
            "median_us",
            std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(*middle).count()));
        return *middle;
    }
    Duration median() {
        return median([] {});
    }

private:
    rig::EmbeddedDesktop& desktop_;
};

}  // namespace orvel::test
