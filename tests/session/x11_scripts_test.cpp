#include "engine/synthesis/system_scripts.hpp"
#include "platform/x11/script_text.hpp"
#include "tests/session/bus_mock.hpp"
#include "tests/session/scripts_session.hpp"
#include "tools/rig/windows.hpp"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <signal.h>
#include <string>
#include <thread>
#include <vector>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class PowerScripts : public Scripts {
protected:
    PowerScripts()
        : logind_(shared->environment(), "logind"),
          systemBus_("DBUS_SYSTEM_BUS_ADDRESS", logind_.busAddress()),
          session_("XDG_SESSION_ID", "c7") {
        logind_.call("org.freedesktop.login1", "/org/freedesktop/login1",
                     "org.freedesktop.DBus.Mock.AddSession", {"c7", "seat0", "1000", "me", "true"});
    }

    BusMock logind_;
    ScopedVariable systemBus_;
    ScopedVariable session_;
};

TEST_F(PowerScripts, EachStatementReachesLogind) {
    EXPECT_TRUE(run(systemEvents("sleep")));
    EXPECT_TRUE(logind_.wasCalled("Suspend True"));
    EXPECT_TRUE(run(systemEvents("restart")));
    EXPECT_TRUE(logind_.wasCalled("Reboot True"));
    EXPECT_TRUE(run(systemEvents("shut down")));
    EXPECT_TRUE(logind_.wasCalled("PowerOff True"));
    EXPECT_TRUE(run(std::string(scripts::kLockScreen)));
    EXPECT_TRUE(logind_.wasCalled("GetSession \"c7\"")) << logind_.calls();
    EXPECT_TRUE(logind_.wasCalled(" Lock"));
    EXPECT_TRUE(run(systemEvents("log out")));
    EXPECT_TRUE(logind_.wasCalled(" Terminate")) << logind_.calls();
}

TEST_F(PowerScripts, ADryRunSaysWhatItWouldDoAndDoesNothing) {
    std::vector<std::string> said;
    open({.isPowerDryRun = true, .say = [&](std::string_view line) { said.emplace_back(line); }});
    for (const auto* statement : {"sleep", "restart", "shut down", "log out"})
        EXPECT_TRUE(run(systemEvents(statement)));
    EXPECT_TRUE(run(std::string(scripts::kLockScreen)));
    EXPECT_THAT(
        said,
        ElementsAre("dry run: would suspend the machine", "dry run: would restart the machine",
                    "dry run: would switch the machine off", "dry run: would end the session",
                    "dry run: would lock the screen"));
    for (const auto* call : {"Suspend", "Reboot", "PowerOff", "Lock", "Terminate"})
        EXPECT_THAT(logind_.calls(), testing::Not(HasSubstr(call)));
}

TEST_F(Scripts, WithoutLogindAPowerStatementIsAnErrorOfSystemEvents) {
    const ScopedVariable nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    const auto outcome = run(systemEvents("restart"));
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error(), StartsWith("execution error: System Events got an error: cannot "
                                            "restart the machine"));
    EXPECT_FALSE(x11::PowerService::check().isOk);
}

TEST_F(Scripts, ATextOutsideTheVocabularyIsAnErrorAndNothingHappens) {
    const auto outcome = run("do shell script \"touch " + (home() / "never").string() + "\"");
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error(), HasSubstr("touch"));
    EXPECT_FALSE(fs::exists(home() / "never"));
}

TEST_F(Scripts, ShowDesktopHidesEveryWindowAndBringsThemBack) {
    rig::PlainWindows app(shared->environment(), shared->x());
    const auto window = app.open({});
    waitForWindow("plain");
    ASSERT_TRUE(run(std::string(scripts::kShowDesktop)));
    EXPECT_TRUE(eventually([&] { return rig::isVisible(shared->x(), window); }, Eq(false)));
    ASSERT_TRUE(run(std::string(scripts::kShowDesktop)));
    EXPECT_TRUE(eventually([&] { return rig::isVisible(shared->x(), window); }, Eq(true)));
}

TEST_F(Scripts, RaisingAWindowByItsTitleBringsItInFront) {
    rig::PlainWindows app(shared->environment(), shared->x());
    const auto below = app.open({.title = "the $(reboot) one; 'x'"});
    app.open({.title = "another"});
    waitForWindow("another");
    EXPECT_TRUE(
        run("tell application \"System Events\"\n    tell (first process whose unix id is " +
            std::to_string(app.process().pid()) +
            ")\n        try\n            perform action \"AXRaise\" of (first window whose "
            "name is \"the $(reboot) one; 'x'\")\n        end try\n    end tell\nend tell"));
    EXPECT_TRUE(
        eventually([&] { return rig::activeWindow(shared->x()); }, testing::Optional(below)));
}

TEST_F(Scripts, WithoutAnOpenWindowTheFrontFolderIsTheDesktop) {
    const auto desktop = folder("Desktop");
    const auto url = run(std::string(scripts::kFrontFinderFolder));
    ASSERT_TRUE(url) << url.error();
    EXPECT_THAT(url.value(), testing::AnyOf("file://" + desktop.string() + "/",
                                            "file://" + home().string() + "/"));
}

TEST_F(Scripts, SettingTheTargetWithoutAWindowIsAnErrorOfFinder) {
    const auto outcome =
        run("tell application \"Finder\"\n    set target of front window to POSIX file \"/\"\nend "
            "tell");
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error(), HasSubstr("Finder got an error: no window is open"));
}

TEST_F(Scripts, NewFoldersGetNamesThatNothingHas) {
    const auto parent = folder("new here");
    const auto source = finder("make new folder at POSIX file \"" + parent.string() + "\"");
    EXPECT_EQ(run(source).value(), (parent / "未命名文件夹").string());
    EXPECT_EQ(run(source).value(), (parent / "未命名文件夹 2").string());
    EXPECT_TRUE(fs::is_directory(parent / "未命名文件夹 2"));
    const auto nowhere = run(finder("make new folder at POSIX file \"/nonexistent\""));
    ASSERT_FALSE(nowhere);
    EXPECT_THAT(nowhere.error(), HasSubstr("Finder got an error"));
}

TEST_F(Scripts, EmptyingTheTrashDeletesWhatLiesInItAndFollowsNoLink) {
    const auto kept = folder("kept");
    write(kept / "precious");
    const auto doomed = folder("doomed");
    write(doomed / "inside");
    fs::create_symlink(kept, home() / "link to kept");
    for (const auto& path : {doomed, home() / "link to kept"}) {
        rig::runTool({"gio", "trash", path.string()}, OwnHome::get().environment());
    }
    const auto trash = OwnHome::get().data() / "Trash";
    ASSERT_FALSE(fs::is_empty(trash / "files"));
    EXPECT_TRUE(run(finder("empty trash")));
    EXPECT_TRUE(fs::is_empty(trash / "files"));
    EXPECT_TRUE(fs::is_empty(trash / "info"));
    EXPECT_TRUE(fs::exists(kept / "precious"));
}

TEST_F(Scripts, TheFileManagersVersionIsItsName) {
    const auto version = run(std::string(scripts::kFinderVersion));
    ASSERT_TRUE(version) << version.error();
    EXPECT_FALSE(version.value().empty());
}

class DockScripts : public Scripts {
protected:
    void SetUp() override {
        Scripts::SetUp();
        fs::remove(x11::DockService::sessionMemory());
        setBehaviour("0");
        panel_ = std::make_unique<rig::ChildProcess>(rig::Command{
            .arguments = {"xfce4-panel", "--disable-wm-check"},
            .environment = rig::merged(shared->environment(), {{"HOME", home().string()}})});
        EXPECT_TRUE(eventually([] { return x11::DockService::check().isOk; }, Eq(true)));
    }
    void TearDown() override {
        panel_.reset();
        Scripts::TearDown();
    }
    static void setBehaviour(const std::string& value) {
        rig::runTool({"xfconf-query", "-c", "xfce4-panel", "-p", "/panels", "-n", "-a", "-t", "int",
                      "-s", "1"},
                     shared->environment());
        rig::runTool({"xfconf-query", "-c", "xfce4-panel", "-p",
                      "/panels/panel-1/autohide-behavior", "-n", "-t", "uint", "-s", value},
                     shared->environment());
    }
    static std::string behaviour() {
        return rig::runTool(
            {"xfconf-query", "-c", "xfce4-panel", "-p", "/panels/panel-1/autohide-behavior"},
            shared->environment());
    }
    static constexpr const char* kHide =
        "do shell script \"defaults write com.apple.dock autohide -bool true; defaults write "
        "com.apple.dock autohide-delay -float 1000; killall Dock\"";
    static constexpr const char* kRestore =
        "do shell script \"defaults write com.apple.dock autohide -bool false; defaults delete "
        "com.apple.dock autohide-delay 2>/dev/null || true; killall Dock\"";
    static constexpr const char* kRepair =
        "tell application \"System Events\" to set autohide of dock preferences to false";

    std::unique_ptr<rig::ChildProcess> panel_;
};

TEST_F(DockScripts, HidingThePanelAndRestoringItGivesBackWhatWas) {
    ASSERT_TRUE(run(kHide));
    EXPECT_EQ(behaviour(), "2\n");
    ASSERT_TRUE(run(kHide));
    ASSERT_TRUE(run(kRestore));
    EXPECT_EQ(behaviour(), "0\n");
}

TEST_F(DockScripts, APanelThatItsUserHidesStaysHidden) {
    setBehaviour("1");
    ASSERT_TRUE(run(kRepair));
    EXPECT_EQ(behaviour(), "1\n");
    ASSERT_TRUE(run(kHide));
    ASSERT_TRUE(run(kRestore));
    EXPECT_EQ(behaviour(), "1\n");
}

TEST_F(DockScripts, WhatACrashLeftHiddenIsRepaired) {
    ASSERT_TRUE(run(kHide));
    open({});
    ASSERT_TRUE(run(kRepair));
    EXPECT_EQ(behaviour(), "0\n");
}

TEST_F(Scripts, WithoutAnyPanelHidingTheDockIsDone) {
    fs::remove(x11::DockService::sessionMemory());
    EXPECT_TRUE(run(systemEvents("set autohide of dock preferences to true")));
    EXPECT_TRUE(run(systemEvents("set autohide of dock preferences to false")));
    EXPECT_FALSE(x11::DockService::check().isOk);
}

TEST_F(Scripts, OsascriptPrintsTheResultOrTheError) {
    EXPECT_THAT(runTask("/usr/bin/osascript", {"-e", std::string(scripts::kFrontFinderFolder)}),
                testing::AllOf(StartsWith("file://"), testing::EndsWith("/\n")));
    EXPECT_THAT(runTask("/usr/bin/osascript", {"-e", "beep"}),
                testing::MatchesRegex("0:4: execution error: .*beep.*\n"));
    EXPECT_THAT(runTask("/usr/bin/osascript", {"script.scpt"}), HasSubstr("no such file"));
}

TEST_F(Scripts, AShellCommandRunsAsItIs) {
    const auto where = folder("shell");
    runTask("/bin/bash", {"-c", "cd '" + where.string() + "' && touch '新建文本文档.txt'"});
    EXPECT_TRUE(fs::exists(where / "新建文本文档.txt"));
    EXPECT_THAT(runTask("/bin/bash", {"-c", "echo out; echo err >&2; exit 3"}), Eq("out\nerr\n"));
}

TEST_F(Scripts, OpenStartsTheChosenTerminalInTheFolder) {
    open({.table = x11::parsePlatformTable(
              "platform.conf", "[applications]\ncom.apple.Terminal = debian-xterm.desktop\n")});
    const auto where = folder("work 'here' $(id)");
    EXPECT_EQ(runTask("/usr/bin/open", {"-a", "Terminal", where.string()}), "");
    waitForWindow("XTerm");
    const auto shellFolder = [&] {
        const auto& windows = (*services_)->clients().windows();
        if (windows.empty()) return std::string();
        std::error_code error;
        const auto process = std::to_string(windows.front().process);
        return fs::read_symlink("/proc/" + process + "/cwd", error).string();
    };
    EXPECT_TRUE(eventually(*services_, shellFolder, Eq(where.string())));
}

TEST_F(Scripts, OpenSaysWhichApplicationItDoesNotFind) {
    EXPECT_EQ(runTask("/usr/bin/open", {"-a", "No Such Thing"}),
              "Unable to find application named 'No Such Thing'\n");
    EXPECT_THAT(runTask("/usr/bin/open", {"/nonexistent/file"}), HasSubstr("does not exist"));
    EXPECT_THAT(runTask("/usr/bin/open", {}), HasSubstr("nothing to open"));
}

TEST_F(Scripts, FilesWithHostileNamesAreOpenedAndNeverRun) {
    const auto where = folder("hostile");
    const std::string name = "-rf $(touch pwned) `touch pwned`; 'q\" \n.txt";
    write(where / name, "text");
    std::optional<Result<>> outcome;
    (*services_)
        ->launcher()
        .openFiles({(where / name).string()},
                   *(*services_)->workspace().applicationPath("org.xfce.mousepad"), true,
                   [&](const Result<>& opened) { outcome = opened; });
    ASSERT_TRUE(eventually(
        *services_, [&] { return outcome.has_value(); }, Eq(true)));
    EXPECT_TRUE(*outcome) << outcome->error();
    const auto window = waitForWindow("Mousepad");
    EXPECT_TRUE(eventually([&] { return rig::titleOf(shared->x(), window); },
                           HasSubstr("-rf $(touch pwned)")));
    for (const auto& each : fs::recursive_directory_iterator(home()))
        EXPECT_NE(each.path().filename(), "pwned");
}

TEST_F(Scripts, OpeningAnApplicationThatRunsBringsItInFrontInsteadOfStartingItAgain) {
    const auto path = *(*services_)->workspace().applicationPath("org.xfce.mousepad");
    (*services_)->launcher().openApplication(path, true);
    const auto first = waitForWindow("Mousepad");
    rig::PlainWindows other(shared->environment(), shared->x());
    other.open({});
    waitForWindow("plain");
    (*services_)->launcher().openApplication(path, std::nullopt);
    EXPECT_TRUE(eventually(
        *services_, [&] { return rig::activeWindow(shared->x()); }, testing::Optional(first)));
    EXPECT_EQ(rig::managedWindows(shared->x()).size(), 2U);
}

TEST_F(Scripts, AnOpeningThatFailsIsTold) {
    std::optional<Result<>> outcome;
    (*services_)
        ->launcher()
        .openFiles({"/etc/hostname"}, "/nonexistent/app.desktop", true,
                   [&](const Result<>& opened) { outcome = opened; });
    ASSERT_TRUE(eventually(
        *services_, [&] { return outcome.has_value(); }, Eq(true)));
    EXPECT_FALSE(*outcome);
}

TEST_F(Scripts, RevealingAFolderOpensItInTheFileManager) {
    (*services_)->launcher().revealInFileManager(folder("revealed").string());
    const auto title = [&] {
        std::string all;
        for (const auto window : rig::managedWindows(shared->x()))
            all += rig::titleOf(shared->x(), window);
        return all;
    };
    EXPECT_TRUE(eventually(*services_, title, HasSubstr("revealed")));
}

}  // namespace
}  // namespace orvel::test
