#include "tests/support/effect_matchers.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel::memory {
namespace {

using namespace orvel::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MemoryServicesTest : public MemoryFixture {
protected:
    Result<> write(const std::string& path, const std::string& text) {
        return desk.fileSystem.writeAtomically(path, std::as_bytes(std::span(text)));
    }
    void runs(ProcessId pid, std::string bundleId, std::optional<std::string> path,
              std::string name) {
        RunningApplication app;
        app.pid = pid;
        app.bundleId = std::move(bundleId);
        app.path = std::move(path);
        app.name = std::move(name);
        desk.world.apps.push_back(app);
    }
};

TEST_F(MemoryServicesTest, WritesOfSettingsAreToldAlsoUnchangedOnes) {
    auto& store = desk.preferenceStore;
    prefer("card_fkeys", true);
    store.set(store.handle("card_fkeys"), true);
    store.set(store.handle("data"), PreferenceData{std::byte{0}, std::byte{1}, std::byte{2}});
    store.set(store.handle("list"), StringList{"a"});
    store.remove(store.handle("card_fkeys"));
    EXPECT_THAT(effects(), ElementsAre(R"({"prefWrite":{"key":"card_fkeys","value":true}})",
                                       R"({"prefWrite":{"key":"data","value":{"data":"AAEC"}}})",
                                       R"({"prefWrite":{"key":"list","value":["a"]}})",
                                       R"({"prefWrite":{"key":"card_fkeys","value":null}})"));
}

TEST_F(MemoryServicesTest, FilesAreToldWhetherWrittenOrRefused) {
    const std::string folder = std::string(kCachesDirectory) + "/OrvelClipboard";
    EXPECT_FALSE(desk.fileSystem.exists(kCachesDirectory));
    EXPECT_TRUE(desk.fileSystem.createFolder(folder).ok());
    EXPECT_TRUE(write(folder + "/a.tiff", "abc").ok());
    desk.world.unwritable = {"/Users/user/Library"};
    EXPECT_FALSE(write(folder + "/b.tiff", "abcd").ok());
    EXPECT_TRUE(desk.fileSystem.remove(folder + "/a.tiff").ok());
    EXPECT_FALSE(desk.fileSystem.remove(folder + "/a.tiff").ok());
    const std::string shown = R"(/Users/user/Library/Caches/OrvelClipboard)";
    EXPECT_THAT(effects(), ElementsAre(R"({"file":{"createFolder":")" + shown + R"("}})",
                                       R"({"file":{"write":")" + shown + R"(/a.tiff","bytes":3}})",
                                       R"({"file":{"write":")" + shown + R"(/b.tiff","bytes":4}})",
                                       R"({"file":{"remove":")" + shown + R"(/a.tiff"}})",
                                       R"({"file":{"remove":")" + shown + R"(/a.tiff"}})"));
}

TEST_F(MemoryServicesTest, AnotherProcessRemovesFilesAndFolders) {
    ASSERT_TRUE(desk.fileSystem.createFolder("/Users/user/a").ok());
    ASSERT_TRUE(write("/Users/user/a/x", "1").ok());
    ASSERT_TRUE(write("/Users/user/ab", "1").ok());
    lookAway();
    desk.world.removeFromOutside("/Users/user/a");
    EXPECT_FALSE(desk.fileSystem.exists("/Users/user/a"));
    EXPECT_FALSE(desk.fileSystem.exists("/Users/user/a/x"));
    EXPECT_TRUE(desk.fileSystem.exists("/Users/user/ab"));
    EXPECT_THAT(effects(), IsEmpty());
}

TEST_F(MemoryServicesTest, TheDockKeepsItsSettingsInTheHomeFolder) {
    const std::string path = "/Users/user/Library/Preferences/com.apple.dock.plist";
    EXPECT_FALSE(desk.fileSystem.readPropertyList(path).ok());
    desk.world.dockPlist = Json(JsonObject{});
    EXPECT_TRUE(desk.fileSystem.readPropertyList(path).ok());
    EXPECT_FALSE(desk.fileSystem.readPropertyList("/Users/user/other.plist").ok());
}

TEST_F(MemoryServicesTest, TheApplicationsFolderMayBeUnreadable) {
    desk.world.applicationsFolder = {{"zoom.app", "Zed.app"}};
    EXPECT_THAT(desk.fileSystem.list("/Applications").value(), ElementsAre("zoom.app", "Zed.app"));
    desk.world.applicationsFolder.reset();
    EXPECT_FALSE(desk.fileSystem.list("/Applications").ok());
}

TEST_F(MemoryServicesTest, OnlyClearingAndCopyingRaiseTheChangeCount) {
    desk.world.copyFromOutside("a", std::nullopt);
    desk.pasteboard.clear();
    desk.pasteboard.setString("b");
    EXPECT_EQ(desk.pasteboard.changeCount(), 2);
    EXPECT_THAT(effects(), ElementsAre(R"({"pasteboard":{"clear":true}})",
                                       R"({"pasteboard":{"setString":"b"}})"));
}

TEST_F(MemoryServicesTest, APictureCanBeLoadedFromAFileWrittenHereOnly) {
    desk.world.copyFromOutside(std::nullopt, PixelSize{640, 480});
    const auto image = desk.pasteboard.image();
    ASSERT_TRUE(desk.fileSystem.writeAtomically("/Users/user/a.tiff", image->tiff).ok());
    lookAway();
    desk.pasteboard.clear();
    EXPECT_FALSE(desk.pasteboard.writeImage("/Users/user/b.tiff").ok());
    EXPECT_TRUE(desk.pasteboard.writeImage("/Users/user/a.tiff").ok());
    EXPECT_EQ(desk.pasteboard.image()->picture.pixelWidth, 640);
    EXPECT_EQ(desk.pasteboard.image()->picture.pixelHeight, 480);
    EXPECT_THAT(effects(), ElementsAre(R"({"pasteboard":{"clear":true}})",
                                       R"({"pasteboard":{"writeImage":"/Users/user/a.tiff"}})"));
}

TEST_F(MemoryServicesTest, ScriptsAndTasksEndAsTheFirstMatchingOutcomeSays) {
    desk.world.scripts = {{"Finder", "12.1", std::nullopt}, {"tell", "", "not allowed"}};
    desk.world.tasks = {{"osascript -e", "file:///Users/user/\n", std::nullopt},
                        {"open", "", "gone"}};
    EXPECT_EQ(desk.scriptRunner.run("tell Finder").value(), "12.1");
    EXPECT_EQ(desk.scriptRunner.run("tell Dock").error(), "not allowed");
    EXPECT_EQ(desk.scriptRunner.run("beep").value(), "");
    EXPECT_EQ(desk.taskRunner.run("/usr/bin/osascript", {"-e", "x"}).value(),
              "file:///Users/user/\n");
    EXPECT_EQ(desk.taskRunner.launch("/usr/bin/open", {"-a"}).error(), "gone");
    EXPECT_THAT(effects(),
                ElementsAre(ranScript("tell Finder"), ranScript("tell Dock"), ranScript("beep"),
                            R"({"task":{"path":"/usr/bin/osascript","arguments":["-e","x"]}})",
                            R"({"task":{"path":"/usr/bin/open","arguments":["-a"]}})"));
}

TEST_F(MemoryServicesTest, BundleIdentifiersResolveToInstalledThenRunningApplications) {
    desk.world.installed = {{"a", std::nullopt, "no path"}, {"b", "/Apps/B.app", "Bee.app"}};
    runs(1, "a", "/Run/A.app", "Ay");
    runs(2, "b", "/Run/B.app", "Be");
    runs(3, "c", std::nullopt, "Cee");
    EXPECT_EQ(desk.workspace.applicationPath("a"), "/Run/A.app");
    EXPECT_EQ(desk.workspace.applicationPath("b"), "/Apps/B.app");
    EXPECT_EQ(desk.workspace.applicationPath("c"), std::nullopt);
    EXPECT_EQ(desk.workspace.displayName("/Apps/B.app"), "Bee");
    EXPECT_EQ(desk.workspace.displayName("/Run/A.app"), "Ay");
    EXPECT_EQ(desk.workspace.displayName("/Apps/Other.app"), "Other");
}

TEST_F(MemoryServicesTest, TheFrontApplicationHasThePidOfItsFirstLivingProcess) {
    runs(1, "a", std::nullopt, "A");
    runs(2, "a", std::nullopt, "A");
    desk.world.apps.front().isTerminated = true;
    EXPECT_FALSE(desk.workspace.frontmostApplication().has_value());
    desk.world.frontmost = "a";
    EXPECT_EQ(desk.workspace.frontmostApplication()->pid, 2);
    desk.world.frontmost = "b";
    EXPECT_EQ(desk.workspace.frontmostApplication()->pid, -1);
    EXPECT_EQ(desk.workspace.frontmostApplication()->bundleId, "b");
}

TEST_F(MemoryServicesTest, OpeningsAreToldAndTheirOutcomeComesLater) {
    desk.world.launchErrors = {{"B.app", "", "damaged"}};
    std::vector<std::string> outcomes;
    const auto note = [&](const Result<>& outcome) {
        outcomes.push_back(outcome ? "opened" : outcome.error());
    };
    desk.launcher.openFiles({"/x"}, "/A.app", true, note);
    desk.launcher.openFiles({"/x"}, "/B.app", true, note);
    desk.launcher.openApplication("/A.app", std::nullopt);
    desk.launcher.openApplication("/A.app", true);
    desk.launcher.openApplicationNamed("Mission Control");
    desk.launcher.openUrl("https://example.com");
    desk.launcher.revealInFileManager("/Users/user");
    EXPECT_THAT(outcomes, IsEmpty());
    drain();
    EXPECT_THAT(outcomes, ElementsAre("opened", "damaged"));
    EXPECT_THAT(effects(),
                ElementsAre(R"({"openFiles":{"paths":["/x"],"appPath":"/A.app","activates":true}})",
                            R"({"openFiles":{"paths":["/x"],"appPath":"/B.app","activates":true}})",
                            R"({"openApp":{"path":"/A.app"}})",
                            R"({"openApp":{"path":"/A.app","activates":true}})",
                            R"({"openApp":{"name":"Mission Control"}})",
                            R"({"openURL":"https://example.com"})",
                            R"({"revealInFinder":{"root":"/Users/user"}})"));
}

TEST_F(MemoryServicesTest, CapsLockIsToldOnlyWhenItCanBeReached) {
    EXPECT_EQ(desk.capsLock.set(true), CapsLockOutcome::done);
    desk.world.hidService = HidService::missing;
    EXPECT_EQ(desk.capsLock.set(true), CapsLockOutcome::noService);
    desk.world.hidService = HidService::closed;
    EXPECT_EQ(desk.capsLock.set(false), CapsLockOutcome::notOpened);
    EXPECT_THAT(effects(), ElementsAre(R"({"capsLock":true})"));
}

TEST_F(MemoryServicesTest, SelectingAnInputSourceMakesItTheCurrentOne) {
    desk.world.inputSources = {{{"abc", true, true}, true},
                               {{"pinyin", true, false}, true},
                               {{"emoji", false, std::nullopt}, false}};
    EXPECT_FALSE(desk.inputSources.current().has_value());
    EXPECT_EQ(desk.inputSources.selectable().size(), 2U);
    desk.inputSources.select("pinyin");
    ASSERT_TRUE(desk.inputSources.current().has_value());
    EXPECT_EQ(desk.inputSources.current()->id, "pinyin");
    EXPECT_EQ(desk.inputSources.current()->isAsciiCapable, false);
    desk.world.currentInputSource = "unlisted";
    EXPECT_EQ(desk.inputSources.current()->isAsciiCapable, std::nullopt);
    EXPECT_THAT(effects(), ElementsAre(R"({"inputSource":"pinyin"})"));
}

TEST_F(MemoryServicesTest, TheLoginItemIsAttemptedAlsoWhenItFails) {
    EXPECT_TRUE(desk.loginItems.registerProgram().ok());
    desk.world.loginItemError = "refused";
    EXPECT_EQ(desk.loginItems.unregisterProgram().error(), "refused");
    EXPECT_THAT(effects(),
                ElementsAre(R"({"loginItem":"register"})", R"({"loginItem":"unregister"})"));
}

TEST_F(MemoryServicesTest, ThisProgramIsOneOfItsRunningInstances) {
    desk.world.otherInstances = {31, 32};
    EXPECT_THAT(desk.appControl.runningInstances(), ElementsAre(31, 32, desk.appControl.ownPid()));
    desk.appControl.activateSelf();
    desk.appControl.closeStrayWindows();
    desk.appControl.terminate();
    EXPECT_THAT(effects(), ElementsAre(R"({"activateSelf":true})", R"({"terminate":true})"));
}

}  // namespace
}  // namespace orvel::memory
