#pragma once

#include "platform/log.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace orvel::contract {

/// What everyone who reports does. `Harness`:
///     Log& log();
///     std::vector<std::string> lines();                  what was reported so far
///     void onAnotherThread(std::function<void()> work);  returns when it is done
template <typename Harness>
class LogContract : public ::testing::Test {
protected:
    Harness harness;
    Log& log = harness.log();
};

TYPED_TEST_SUITE_P(LogContract);

TYPED_TEST_P(LogContract, ReportsLinesInOrderAsTheyAre) {
    this->log.line("⚡️ 开机自检完毕");
    this->log.line("");
    this->log.line("100 % \"x\" \\n");
    EXPECT_THAT(this->harness.lines(),
                ::testing::ElementsAre("⚡️ 开机自检完毕", "", "100 % \"x\" \\n"));
}

TYPED_TEST_P(LogContract, ReportsFromAnyThread) {
    this->harness.onAnotherThread([this] { this->log.line("from elsewhere"); });
    EXPECT_THAT(this->harness.lines(), ::testing::ElementsAre("from elsewhere"));
}

TYPED_TEST_P(LogContract, TracesNothingUnlessTheUserAskedForIt) {
    EXPECT_FALSE(this->log.isTracing());
    this->log.trace("PATCH");
    EXPECT_THAT(this->harness.lines(), ::testing::IsEmpty());
}

REGISTER_TYPED_TEST_SUITE_P(LogContract, ReportsLinesInOrderAsTheyAre, ReportsFromAnyThread,
                            TracesNothingUnlessTheUserAskedForIt);

}  // namespace orvel::contract
