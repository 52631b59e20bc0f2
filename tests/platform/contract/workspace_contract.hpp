#pragma once

#include "platform/workspace.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace orvel::contract {

/// What everyone who knows the applications does. `Harness`:
///     Workspace& workspace();
///     InstalledExample installed();       an application that is installed
///     ProcessId startApplication();       one starts and comes to the front
///     void bringToFront(ProcessId pid);   a person does
///     void end(ProcessId pid);            it ends
///     bool wasActivated(ProcessId pid);   the workspace brought it to the front
///     std::vector<ProcessId> askedToEnd();    by the workspace, once somebody was
/// Each act returns when the workspace had the chance to notice.
struct InstalledExample {
    std::string id;
    std::string path;
    std::string name;
};

template <typename Harness>
class WorkspaceContract : public ::testing::Test {
protected:
    Harness harness;
    Workspace& workspace = harness.workspace();

    [[nodiscard]] std::optional<ProcessId> front() {
        const auto application = workspace.frontmostApplication();
        return application ? std::optional(application->pid) : std::nullopt;
    }
    /// The application as it is listed; absent when it does not run.
    [[nodiscard]] std::optional<RunningApplication> listed(ProcessId pid) {
        const auto all = workspace.runningApplications();
        const auto found = std::find_if(all.begin(), all.end(), [pid](const auto& application) {
            return application.pid == pid && !application.isTerminated;
        });
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, HasNobodyInFrontWhileNothingRuns) {
    EXPECT_FALSE(this->front().has_value());
    EXPECT_TRUE(this->workspace.runningApplications().empty());
}

TYPED_TEST_P(WorkspaceContract, ListsWhatRuns) {
    const ProcessId pid = this->harness.startApplication();
    const auto listed = this->listed(pid);
    ASSERT_TRUE(listed.has_value());
    EXPECT_FALSE(listed->name.empty());
    EXPECT_EQ(listed->policy, ActivationPolicy::regular);
    EXPECT_FALSE(listed->isHidden);
}

TYPED_TEST_P(WorkspaceContract, KnowsWhichApplicationIsInFront) {
    const ProcessId first = this->harness.startApplication();
    const ProcessId second = this->harness.startApplication();
    EXPECT_EQ(this->front(), second);
    EXPECT_TRUE(this->listed(second)->isActive);
    this->harness.bringToFront(first);
    EXPECT_EQ(this->front(), first);
    EXPECT_TRUE(this->listed(first)->isActive);
    EXPECT_FALSE(this->listed(second)->isActive);
}

TYPED_TEST_P(WorkspaceContract, ForgetsWhatEnded) {
    const ProcessId pid = this->harness.startApplication();
    this->harness.end(pid);
    EXPECT_FALSE(this->listed(pid).has_value());
    EXPECT_NE(this->front(), pid);
}

TYPED_TEST_P(WorkspaceContract, ActivatesTheApplicationItIsTold) {
    const ProcessId first = this->harness.startApplication();
    this->harness.startApplication();
    this->workspace.activate(first, kActivateIgnoringOtherApps);
    EXPECT_TRUE(this->harness.wasActivated(first));
}

TYPED_TEST_P(WorkspaceContract, AsksOnlyTheOneThatItIsToldToEnd) {
    const ProcessId first = this->harness.startApplication();
    this->harness.startApplication();
    this->workspace.terminate(first);
    EXPECT_THAT(this->harness.askedToEnd(), ::testing::ElementsAre(first));
}

TYPED_TEST_P(WorkspaceContract, FindsInstalledApplications) {
    const InstalledExample example = this->harness.installed();
    EXPECT_EQ(this->workspace.applicationPath(example.id), example.path);
    EXPECT_EQ(this->workspace.displayName(example.path), example.name);
    EXPECT_EQ(this->workspace.applicationPath("no.such.application"), std::nullopt);
    EXPECT_EQ(this->workspace.applicationPath(""), std::nullopt);
}

TYPED_TEST_P(WorkspaceContract, NamesWhatIsNotInstalledByItsFile) {
    EXPECT_EQ(this->workspace.displayName("/nowhere/Some Tool.app"), "Some Tool");
    EXPECT_EQ(this->workspace.displayName("/nowhere/tool"), "tool");
}

REGISTER_TYPED_TEST_SUITE_P(WorkspaceContract, HasNobodyInFrontWhileNothingRuns, ListsWhatRuns,
                            KnowsWhichApplicationIsInFront, ForgetsWhatEnded,
                            ActivatesTheApplicationItIsTold, AsksOnlyTheOneThatItIsToldToEnd,
                            FindsInstalledApplications, NamesWhatIsNotInstalledByItsFile);

}  // namespace orvel::contract
