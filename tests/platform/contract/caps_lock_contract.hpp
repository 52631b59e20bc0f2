#pragma once

#include "platform/caps_lock.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What everyone who sets Caps Lock does. `Harness`:
///     CapsLock& capsLock();
///     bool isLocked();       whether the lock is on, everything having come to rest
template <typename Harness>
class CapsLockContract : public ::testing::Test {
protected:
    Harness harness;
    CapsLock& lock = harness.capsLock();
};

TYPED_TEST_SUITE_P(CapsLockContract);

TYPED_TEST_P(CapsLockContract, GoesOnAndOff) {
    EXPECT_EQ(this->lock.set(true), CapsLockOutcome::done);
    EXPECT_TRUE(this->harness.isLocked());
    EXPECT_EQ(this->lock.set(false), CapsLockOutcome::done);
    EXPECT_FALSE(this->harness.isLocked());
}

TYPED_TEST_P(CapsLockContract, StaysAsItIsWhenSetAgain) {
    for (const bool on : {true, false}) {
        EXPECT_EQ(this->lock.set(on), CapsLockOutcome::done);
        EXPECT_EQ(this->lock.set(on), CapsLockOutcome::done);
        EXPECT_EQ(this->harness.isLocked(), on);
    }
}

REGISTER_TYPED_TEST_SUITE_P(CapsLockContract, GoesOnAndOff, StaysAsItIsWhenSetAgain);

}  // namespace orvel::contract
