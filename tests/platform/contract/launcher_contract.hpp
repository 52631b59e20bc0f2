#pragma once

#include "platform/launcher.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace orvel::contract {

/// What everyone who opens things does. `Harness`:
///     Launcher& launcher();
///     std::string applicationPath();    an application that is installed
///     std::string applicationName();    its name
///     std::vector<std::vector<std::string>> starts(std::size_t count);
///         what that application was started with each time, once it was started so often
///     std::string file(std::string name);    a file of that name
///     void refusesPath(std::string path);    makes sure that nothing can be opened there
///     bool isFolderShown(std::string path);  the file manager shows it
///     std::vector<std::string> urls(std::size_t count);   what was opened, once it is so many
///     bool runUntil(std::function<bool()> isDone);
template <typename Harness>
class LauncherContract : public ::testing::Test {
protected:
    static constexpr const char* kNowhere = "/nowhere/app.desktop";

    Harness harness;
    Launcher& launcher = harness.launcher();
    std::optional<Result<>> outcome;

    OpenCompletion keepOutcome() {
        return [this](const Result<>& ended) { outcome = ended; };
    }
    [[nodiscard]] bool ended() {
        return harness.runUntil([this] { return outcome.has_value(); });
    }
};

TYPED_TEST_SUITE_P(LauncherContract);

TYPED_TEST_P(LauncherContract, OpensAnApplicationByItsPath) {
    this->launcher.openApplication(this->harness.applicationPath(), true);
    EXPECT_THAT(this->harness.starts(1), ::testing::ElementsAre(::testing::IsEmpty()));
}

TYPED_TEST_P(LauncherContract, OpensAnApplicationByItsName) {
    this->launcher.openApplicationNamed(this->harness.applicationName());
    EXPECT_THAT(this->harness.starts(1), ::testing::ElementsAre(::testing::IsEmpty()));
}

TYPED_TEST_P(LauncherContract, OpensFilesAndTellsSoOnceItIsDone) {
    const std::vector<std::string> files{this->harness.file("a b.txt"),
                                         this->harness.file("-n $(id) 'x' \"y\" 新.txt")};
    this->launcher.openFiles(files, this->harness.applicationPath(), true, this->keepOutcome());
    EXPECT_FALSE(this->outcome.has_value()) << "told before it returned";
    ASSERT_TRUE(this->ended());
    EXPECT_TRUE(this->outcome->ok());
    EXPECT_THAT(this->harness.starts(1), ::testing::ElementsAre(files));
}

TYPED_TEST_P(LauncherContract, TellsWhenFilesCannotBeOpened) {
    this->harness.refusesPath(this->kNowhere);
    this->launcher.openFiles({this->harness.file("a.txt")}, this->kNowhere, true,
                             this->keepOutcome());
    ASSERT_TRUE(this->ended());
    ASSERT_FALSE(this->outcome->ok());
    EXPECT_FALSE(this->outcome->error().empty());
}

TYPED_TEST_P(LauncherContract, KeepsOnAfterOpeningsThatFailed) {
    this->harness.refusesPath(this->kNowhere);
    this->launcher.openApplication(this->kNowhere, std::nullopt);
    this->launcher.openApplicationNamed("No Such Application");
    this->launcher.openFiles({}, this->kNowhere, false, nullptr);
    this->launcher.openApplication(this->harness.applicationPath(), true);
    EXPECT_THAT(this->harness.starts(1), ::testing::SizeIs(1));
}

TYPED_TEST_P(LauncherContract, OpensAddressesAsTheyAre) {
    const std::string address = "https://example.com/a%20b?q='x'&n=1#$(id)";
    this->launcher.openUrl(address);
    EXPECT_THAT(this->harness.urls(1), ::testing::ElementsAre(address));
}

TYPED_TEST_P(LauncherContract, ShowsAFolderInTheFileManager) {
    const std::string file = this->harness.file("a.txt");
    const std::string folder = file.substr(0, file.rfind('/'));
    this->launcher.revealInFileManager(folder);
    EXPECT_TRUE(this->harness.isFolderShown(folder));
}

REGISTER_TYPED_TEST_SUITE_P(LauncherContract, OpensAnApplicationByItsPath,
                            OpensAnApplicationByItsName, OpensFilesAndTellsSoOnceItIsDone,
                            TellsWhenFilesCannotBeOpened, KeepsOnAfterOpeningsThatFailed,
                            OpensAddressesAsTheyAre, ShowsAFolderInTheFileManager);

}  // namespace orvel::contract
