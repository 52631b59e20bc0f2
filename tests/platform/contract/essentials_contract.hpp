#pragma once

#include "platform/essentials.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace orvel::contract {

/// What is essential differs by desktop; how it is told does not. `Harness`:
///     Essentials& essentials();
template <typename Harness>
class EssentialsContract : public ::testing::Test {
protected:
    Harness harness;
    Essentials& essentials = harness.essentials();
};

TYPED_TEST_SUITE_P(EssentialsContract);

TYPED_TEST_P(EssentialsContract, TellsOfEachOnce) {
    const std::vector<EssentialFinding> findings = this->essentials.check();
    std::set<Essential> different;
    for (const EssentialFinding& finding : findings) different.insert(finding.essential);
    EXPECT_THAT(findings, ::testing::Not(::testing::IsEmpty()));
    EXPECT_EQ(different.size(), findings.size());
}

TYPED_TEST_P(EssentialsContract, FindsTheSameWhileNothingChanges) {
    const std::vector<EssentialFinding> findings = this->essentials.check();
    EXPECT_EQ(this->essentials.check(), findings);
}

REGISTER_TYPED_TEST_SUITE_P(EssentialsContract, TellsOfEachOnce, FindsTheSameWhileNothingChanges);

}  // namespace orvel::contract
