#pragma once

#include "platform/task_runner.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::contract {

/// What every runner of child processes does. `Harness`:
///     TaskRunner& tasks();
///     Result<std::string> run(path, arguments);   off the main thread where that matters
///     void hasProgram(path, arguments, output);   makes sure that this call prints this
///     void hasNoProgram(path);                    makes sure that nothing can be launched there
template <typename Harness>
class TaskRunnerContract : public ::testing::Test {
protected:
    using Arguments = std::vector<std::string>;
    Harness harness;
};

TYPED_TEST_SUITE_P(TaskRunnerContract);

TYPED_TEST_P(TaskRunnerContract, GivesWhatTheProgramPrints) {
    this->harness.hasProgram("/bin/echo", {"one", "two"}, "one two\n");
    const auto output = this->harness.run("/bin/echo", {"one", "two"});
    ASSERT_TRUE(output.ok()) << output.error();
    EXPECT_EQ(output.value(), "one two\n");
}

TYPED_TEST_P(TaskRunnerContract, PassesArgumentsAsTheyAre) {
    const std::vector<std::string> odd{"$(id)", "a b", "'", "-n", "*"};
    this->harness.hasProgram("/bin/echo", odd, "$(id) a b ' -n *\n");
    const auto output = this->harness.run("/bin/echo", odd);
    ASSERT_TRUE(output.ok()) << output.error();
    EXPECT_EQ(output.value(), "$(id) a b ' -n *\n");
}

TYPED_TEST_P(TaskRunnerContract, FailsWhenThereIsNoSuchProgram) {
    this->harness.hasNoProgram("/no/such/program");
    const auto output = this->harness.run("/no/such/program", {});
    ASSERT_FALSE(output.ok());
    EXPECT_FALSE(output.error().empty());
    EXPECT_FALSE(this->harness.tasks().launch("/no/such/program", {}).ok());
}

TYPED_TEST_P(TaskRunnerContract, LaunchesWithoutWaiting) {
    this->harness.hasProgram("/bin/sleep", {"5"}, "");
    EXPECT_TRUE(this->harness.tasks().launch("/bin/sleep", {"5"}).ok());
}

REGISTER_TYPED_TEST_SUITE_P(TaskRunnerContract, GivesWhatTheProgramPrints, PassesArgumentsAsTheyAre,
                            FailsWhenThereIsNoSuchProgram, LaunchesWithoutWaiting);

}  // namespace orvel::contract
