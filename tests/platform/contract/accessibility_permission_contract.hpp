#pragma once

#include "platform/accessibility_permission.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What everyone who knows about the permission does. `Harness`:
///     AccessibilityPermission& permission();
///     bool withhold();    takes the permission away; false where the desktop has none to take
///     int prompts();      how often the system's prompt was shown
template <typename Harness>
class AccessibilityPermissionContract : public ::testing::Test {
protected:
    Harness harness;
    AccessibilityPermission& permission = harness.permission();
};

TYPED_TEST_SUITE_P(AccessibilityPermissionContract);

TYPED_TEST_P(AccessibilityPermissionContract, DoesNotAskWhoHasIt) {
    EXPECT_TRUE(this->permission.isTrusted());
    EXPECT_TRUE(this->permission.isTrustedOrPrompt());
    EXPECT_EQ(this->harness.prompts(), 0);
}

TYPED_TEST_P(AccessibilityPermissionContract, AsksOnlyWhenToldTo) {
    const bool isTrusted = !this->harness.withhold();
    EXPECT_EQ(this->permission.isTrusted(), isTrusted);
    EXPECT_EQ(this->harness.prompts(), 0);
    EXPECT_EQ(this->permission.isTrustedOrPrompt(), isTrusted);
    EXPECT_EQ(this->harness.prompts(), isTrusted ? 0 : 1);
}

REGISTER_TYPED_TEST_SUITE_P(AccessibilityPermissionContract, DoesNotAskWhoHasIt,
                            AsksOnlyWhenToldTo);

}  // namespace orvel::contract
