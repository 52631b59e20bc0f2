#pragma once

#include "platform/login_items.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What starting with the login session does. `Harness`:
///     LoginItems& items();
///     void refuse();   from now on the desktop takes no change
template <typename Harness>
class LoginItemsContract : public ::testing::Test {
protected:
    Harness harness;
    LoginItems& items = harness.items();
};

TYPED_TEST_SUITE_P(LoginItemsContract);

TYPED_TEST_P(LoginItemsContract, RegistersAndUnregistersAnyNumberOfTimes) {
    EXPECT_TRUE(this->items.unregisterProgram().ok());
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(this->items.registerProgram().ok());
        EXPECT_TRUE(this->items.registerProgram().ok());
        EXPECT_TRUE(this->items.unregisterProgram().ok());
        EXPECT_TRUE(this->items.unregisterProgram().ok());
    }
}

TYPED_TEST_P(LoginItemsContract, SaysWhyItFails) {
    this->harness.refuse();
    const Result<> registered = this->items.registerProgram();
    ASSERT_FALSE(registered.ok());
    EXPECT_NE(registered.error(), "");
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemsContract, RegistersAndUnregistersAnyNumberOfTimes,
                            SaysWhyItFails);

}  // namespace orvel::contract
