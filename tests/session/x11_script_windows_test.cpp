#include "engine/synthesis/system_scripts.hpp"
#include "tests/session/scripts_session.hpp"
#include "tools/rig/picture.hpp"

#include <cstdlib>

// Scripts that show something: folders in the file manager, and the Force Quit window.

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using testing::Eq;
using testing::HasSubstr;

/// With each of the file managers.
class FileManagerScripts : public Scripts, public testing::WithParamInterface<const char*> {
protected:
    void startFileManager(const fs::path& folder) {
        const auto program = std::string(GetParam());
        application_ = std::make_unique<rig::ChildProcess>(rig::Command{
            .arguments = {program, folder.string()},
            // As the services start it: it is one program for each runtime folder.
            .environment = rig::merged(
                shared->environment(),
                {{"HOME", home().string()}, {"XDG_RUNTIME_DIR", std::getenv("XDG_RUNTIME_DIR")}})});
        waitForWindow(program);
    }
    void TearDown() override {
        application_.reset();
        Scripts::TearDown();
    }
    std::string frontFolder() {
        const auto url = run(std::string(scripts::kFrontFinderFolder));
        return url ? url.value() : url.error();
    }

    std::unique_ptr<rig::ChildProcess> application_;
};

INSTANTIATE_TEST_SUITE_P(Each, FileManagerScripts, testing::Values("pcmanfm", "thunar"),
                         [](const auto& param) { return std::string(param.param); });

TEST_P(FileManagerScripts, TheFrontFolderIsTheOneThatItsWindowShows) {
    // Another folder of that name is nearer to the home folder.
    folder("Reports 100%");
    startFileManager(folder("Documents/2024/Reports 100%"));
    EXPECT_TRUE(eventually([&] { return frontFolder(); },
                           Eq("file://" + home().string() + "/Documents/2024/Reports%20100%25/")));
}

TEST_P(FileManagerScripts, ItsHomeFolderIsFoundUnderWhateverName) {
    startFileManager(home());
    EXPECT_TRUE(eventually([&] { return frontFolder(); }, Eq("file://" + home().string() + "/")));
}

TEST_P(FileManagerScripts, SettingTheTargetShowsThatFolderInFront) {
    startFileManager(folder("Start"));
    fs::create_directories(home() / "quoted 'x' & y");
    EXPECT_TRUE(run("tell application \"Finder\"\n    set target of front window to POSIX file \"" +
                    (home() / "quoted 'x' & y").string() + "\"\nend tell"));
    EXPECT_TRUE(eventually([&] { return frontFolder(); },
                           Eq("file://" + home().string() + "/quoted%20'x'%20&%20y/")));
}

/// With file managers that tell what they show.
class TellingFileManagerScripts : public FileManagerScripts {
protected:
    static void SetUpTestSuite() {
        shared = std::make_unique<rig::EmbeddedDesktop>(
            rig::EmbeddedDesktop::Options{.size = {},
                                          .windowManager = rig::WindowManager::Kind::openbox,
                                          .accessibility = rig::SessionBus::Accessibility::on});
    }
    void SetUp() override {
        FileManagerScripts::SetUp();
        EXPECT_TRUE(eventually(
            *services_, [&] { return (*services_)->accessibleFocus().presence(); },
            Eq(x11::AccessibleFocus::Presence::present)));
    }
    Result<std::string> setTarget(const fs::path& path) {
        std::string text;
        for (const char each : path.string()) {
            if (each == '"' || each == '\\') text += '\\';
            text += each;
        }
        return run("tell application \"Finder\"\n    set target of front window to POSIX file \"" +
                   text + "\"\nend tell");
    }
};

INSTANTIATE_TEST_SUITE_P(Each, TellingFileManagerScripts, testing::Values("pcmanfm", "thunar"),
                         [](const auto& param) { return std::string(param.param); });

TEST_P(TellingFileManagerScripts, SettingTheTargetChangesTheFrontWindowAndOpensNoOther) {
    startFileManager(folder("Start"));
    const auto windows = rig::managedWindows(shared->x());
    for (const char* name : {"quoted 'x' & y", "$(touch never)", "100% a%20b", "目录 -rf", "-rf"}) {
        const auto target = folder(fs::path("targets") / name);
        ASSERT_TRUE(setTarget(target));
        EXPECT_TRUE(
            eventually([&] { return frontFolder(); }, Eq(x11::toUri(target.string()) + "/")))
            << name;
        EXPECT_EQ(rig::managedWindows(shared->x()), windows) << name;
    }
    EXPECT_FALSE(fs::exists(home() / "never"));
}

TEST_P(TellingFileManagerScripts, ATargetThatIsNoFolderIsAnErrorAndChangesNothing) {
    startFileManager(folder("Start"));
    const auto outcome = setTarget(home() / "nowhere");
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error(), HasSubstr("nowhere is no folder"));
    EXPECT_EQ(frontFolder(), x11::toUri((home() / "Start").string()) + "/");
}

/// With the program that the script shows.
class ForceQuitScripts : public Scripts {
protected:
    void SetUp() override {
        Scripts::SetUp();
        open({.helperFolder = std::getenv("ORVEL_BUILD_DIR")});
    }
    rig::WindowId dialog() {
        const auto shown = waitForWindow("强制退出应用程序");
        rig::waitForFocus(shared->x(), shown);
        return shown;
    }
    static rig::Picture pictureOf(rig::WindowId shown) {
        return rig::pictureOf(shared->x(), shown);
    }
    /// Presses the key and waits until the window has drawn what came of it.
    void press(rig::WindowId shown, const char* key) {
        ASSERT_TRUE(eventually(
            *services_, [&] { return pictureOf(shown).colourCount() > 1; }, Eq(true)));
        const auto before = pictureOf(shown);
        shared->keyboard().tap(key);
        EXPECT_TRUE(eventually(
            *services_, [&] { return pictureOf(shown) != before; }, Eq(true)))
            << key;
    }
    static constexpr const char* kChord =
        "tell application \"System Events\" to key code 53 using {command down, option down}";
};

TEST_F(ForceQuitScripts, TheChordOfTheSystemEndsTheHungApplicationInFrontByKeyboard) {
    rig::PlainWindows other(shared->environment(), shared->x());
    other.open({.title = "other", .className = "Other"});
    rig::PlainWindows hung(shared->environment(), shared->x());
    rig::focusWindow(shared->x(), hung.open({.title = "hung", .className = "Hung"}));
    hung.process().signal(SIGSTOP);
    waitForWindow("hung");
    ASSERT_TRUE(run(kChord));
    const auto shown = dialog();
    press(shown, "Return");
    press(shown, "Return");
    const auto end = hung.process().waitForExit();
    ASSERT_TRUE(end);
    EXPECT_EQ(end->signal, SIGKILL);
    EXPECT_TRUE(other.process().running());
    shared->keyboard().tap("Escape");
    EXPECT_TRUE(eventually([&] { return rig::managedWindows(shared->x()).size(); }, Eq(1U)));
}

TEST_F(ForceQuitScripts, TheChordAgainBringsTheWindowToTheFront) {
    ASSERT_TRUE(run(kChord));
    const auto shown = dialog();
    rig::PlainWindows other(shared->environment(), shared->x());
    rig::focusWindow(shared->x(), other.open({.title = "other"}));
    ASSERT_TRUE(run(kChord));
    EXPECT_TRUE(eventually(
        *services_, [&] { return rig::activeWindow(shared->x()); }, testing::Optional(shown)));
    EXPECT_EQ(rig::managedWindows(shared->x()).size(), 2U);
}

}  // namespace
}  // namespace orvel::test
