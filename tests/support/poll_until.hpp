#pragma once

#include "tools/rig/poll_until.hpp"

#include <gmock/gmock.h>

#include <chrono>

namespace orvel::test {

/// Success as soon as what `probe` returns matches; otherwise, after the limit, a failure that
/// shows what it returned last:
///
///     EXPECT_TRUE(eventually([&] { return state.keysDown(); }, IsEmpty()));
template <class Probe, class Matcher>
testing::AssertionResult eventually(const Probe& probe, const Matcher& matcher,
                                    std::chrono::milliseconds limit = rig::kPatience) {
    using Seen = std::decay_t<decltype(probe())>;
    const testing::Matcher<Seen> wanted = testing::SafeMatcherCast<Seen>(matcher);
    const auto polled = rig::pollUntil(
        probe, [&wanted](const Seen& seen) { return wanted.Matches(seen); }, limit);
    if (polled) {
        return testing::AssertionSuccess();
    }
    testing::StringMatchResultListener listener;
    wanted.MatchAndExplain(polled.last, &listener);
    return testing::AssertionFailure()
           << "still not so after " << limit.count()
           << " ms: " << testing::DescribeMatcher<Seen>(wanted)
           << "\nlast seen: " << testing::PrintToString(polled.last) << ' ' << listener.str();
}

}  // namespace orvel::test
