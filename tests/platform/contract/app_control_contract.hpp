#pragma once

#include "platform/app_control.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvel::contract {

/// What every program knows of itself. `Harness`:
///     AppControl& control();
///     bool wasAskedToEnd();   the desktop was asked to end this program
template <typename Harness>
class AppControlContract : public ::testing::Test {
protected:
    Harness harness;
    AppControl& control = harness.control();
};

TYPED_TEST_SUITE_P(AppControlContract);

TYPED_TEST_P(AppControlContract, IsOneOfItsRunningCopies) {
    const ProcessId own = this->control.ownPid();
    EXPECT_GT(own, 0);
    EXPECT_EQ(this->control.ownPid(), own);
    EXPECT_THAT(this->control.runningInstances(), ::testing::Contains(own).Times(1));
}

TYPED_TEST_P(AppControlContract, EndsOnlyWhenToldTo) {
    this->control.activateSelf();
    this->control.closeStrayWindows();
    EXPECT_FALSE(this->harness.wasAskedToEnd());
    this->control.terminate();
    EXPECT_TRUE(this->harness.wasAskedToEnd());
}

REGISTER_TYPED_TEST_SUITE_P(AppControlContract, IsOneOfItsRunningCopies, EndsOnlyWhenToldTo);

}  // namespace orvel::contract
