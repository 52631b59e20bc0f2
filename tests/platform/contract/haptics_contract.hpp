#pragma once

#include "platform/haptics.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What every touchpad with a motor does. `Harness`:
///     Haptics& haptics();
///     int patterns();       how many patterns the motor played
template <typename Harness>
class HapticsContract : public ::testing::Test {
protected:
    Harness harness;
};

TYPED_TEST_SUITE_P(HapticsContract);

TYPED_TEST_P(HapticsContract, PlaysOnePatternForEachTap) {
    this->harness.haptics().tap();
    EXPECT_EQ(this->harness.patterns(), 1);
    this->harness.haptics().tap();
    EXPECT_EQ(this->harness.patterns(), 2);
}

REGISTER_TYPED_TEST_SUITE_P(HapticsContract, PlaysOnePatternForEachTap);

}  // namespace orvel::contract
