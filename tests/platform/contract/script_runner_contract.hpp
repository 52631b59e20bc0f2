#pragma once

#include "platform/script_runner.hpp"

#include <gtest/gtest.h>

#include <string>

namespace orvel::contract {

/// What everyone who runs scripts does. `Harness`:
///     Result<std::string> run(std::string_view source);   off the main thread, as rooms do
///     std::string folderScript();      a script that gives the address of a folder
///     std::string folderAddress();     … and the address that it must give
///     void knowsNoScript(std::string source);   makes sure that this one is an error
template <typename Harness>
class ScriptRunnerContract : public ::testing::Test {
protected:
    static constexpr const char* kNonsense =
        "tell application \"System Events\" to frobnicate the \"x\"";

    Harness harness;
};

TYPED_TEST_SUITE_P(ScriptRunnerContract);

TYPED_TEST_P(ScriptRunnerContract, GivesTheResultAsText) {
    const auto address = this->harness.run(this->harness.folderScript());
    ASSERT_TRUE(address.ok()) << address.error();
    EXPECT_EQ(address.value(), this->harness.folderAddress());
}

TYPED_TEST_P(ScriptRunnerContract, DescribesAnError) {
    this->harness.knowsNoScript(this->kNonsense);
    const auto outcome = this->harness.run(this->kNonsense);
    ASSERT_FALSE(outcome.ok());
    EXPECT_FALSE(outcome.error().empty());
}

TYPED_TEST_P(ScriptRunnerContract, RunsOnAfterAnError) {
    this->harness.knowsNoScript(this->kNonsense);
    EXPECT_FALSE(this->harness.run(this->kNonsense).ok());
    EXPECT_TRUE(this->harness.run(this->harness.folderScript()).ok());
}

REGISTER_TYPED_TEST_SUITE_P(ScriptRunnerContract, GivesTheResultAsText, DescribesAnError,
                            RunsOnAfterAnError);

}  // namespace orvel::contract
