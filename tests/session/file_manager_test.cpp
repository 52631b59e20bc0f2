#include "tests/session/session_test.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/accessible_app.hpp"
#include "tools/rig/child_process.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/windows.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using testing::Eq;
using testing::HasSubstr;
using testing::StartsWith;

std::string program() { return std::string(std::getenv("ORVEL_BUILD_DIR")) + "/orvel-session"; }

/// A file manager driven from the keyboard while the program runs: what counts is what becomes of
/// the files.
class FileManager : public SessionTest {
protected:
    static void SetUpTestSuite() {
        startDesktop({.size = {},
                      .windowManager = rig::WindowManager::Kind::openbox,
                      .accessibility = rig::SessionBus::Accessibility::on});
    }
    void SetUp() override {
        fs::create_directories(folder());
        // Without its question before it throws something away.
        fs::create_directories(desktop().home().config() / "libfm");
        std::ofstream(desktop().home().config() / "libfm/libfm.conf")
            << "[config]\nconfirm_trash=0\nsingle_click=0\n";
        auto settings = rig::usualMapping();
        settings["card_finder"] = true;
        settings["card_modifier"] = true;
        rig::writeSettings(desktop().environment(), settings);
    }
    void TearDown() override {
        manager_.reset();
        if (orvel_) {
            EXPECT_TRUE(orvel_->stop().success());
        }
        orvel_.reset();
        fs::remove_all(folder());
        fs::remove_all(trash());
        SessionTest::TearDown();
    }

    static fs::path folder() { return desktop().home().path() / "work"; }
    static fs::path trash() { return desktop().home().data() / "Trash"; }
    static void write(const fs::path& path) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << path.filename().string();
    }

    /// Opens the folder in front, with so many things in it, and starts the program.
    void start(int count, const fs::path& shown = folder()) {
        manager_ = std::make_unique<rig::ChildProcess>(rig::Command{
            .arguments = {"pcmanfm", shown.string()},
            .environment =
                rig::merged(desktop().environment(), {{"GTK_MODULES", "gail:atk-bridge"}})});
        window_ = rig::waitForWindow(desktop().x(), "Pcmanfm");
        orvel_.emplace(program(), desktop().environment());
        rig::focusWindow(desktop().x(), window_);
        waitUntilListed(count);
    }
    /// The file manager lists a folder in the background and takes keys for its files only then.
    static void waitUntilListed(int count) {
        const std::string items = std::to_string(count) + (count == 1 ? " item" : " items");
        ASSERT_TRUE(eventually(status, StartsWith(items)));
    }
    static void selectFirst(const std::string& name) {
        keyboard().tap("Home");
        ASSERT_TRUE(eventually(status, HasSubstr('"' + name + '"')));
    }
    /// What the status bar says of the folder, or of the file that is selected in it.
    static std::string status() {
        for (const rig::Accessible& item :
             rig::AccessibleApp(desktop().environment(), "pcmanfm").items()) {
            if (item.role == "status bar") return item.name;
        }
        return {};
    }
    /// Goes up to the folder that holds this one, with so many things in it.
    void goUp(int count) {
        keyboard().chord({"Control_L", "Up"});
        ASSERT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
        waitUntilListed(count);
    }
    std::string title() { return rig::titleOf(desktop().x(), window_); }

    std::unique_ptr<rig::ChildProcess> manager_;
    std::optional<rig::OrvelProgram> orvel_;
    rig::WindowId window_ = 0;
};

bool isThere(const fs::path& path) { return fs::exists(path); }

TEST_F(FileManager, ReturnOpensAFolderAndTheSideButtonsGoBackAndForward) {
    fs::create_directories(folder() / "inner");
    start(1);
    ASSERT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
    selectFirst("inner");
    keyboard().tap("Return");
    EXPECT_TRUE(eventually([&] { return title(); }, HasSubstr("inner")));
    mouse().click(rig::Button::back);
    EXPECT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
    mouse().click(rig::Button::forward);
    EXPECT_TRUE(eventually([&] { return title(); }, HasSubstr("inner")));
}

TEST_F(FileManager, F2RenamesAndTypingTheNameIsLeftAlone) {
    write(folder() / "old");
    start(1);
    selectFirst("old");
    keyboard().tap("F2");
    // The dialog has the name selected; Return confirms it and opens nothing.
    const auto dialog = rig::waitForWindow(desktop().x(), "Rename File");
    rig::focusWindow(desktop().x(), dialog);
    keyboard().chord({"Control_L", "a"});
    keyboard().type("fresh");
    keyboard().tap("Return");
    EXPECT_TRUE(eventually([] { return isThere(folder() / "fresh"); }, Eq(true)));
    EXPECT_FALSE(isThere(folder() / "old"));
}

TEST_F(FileManager, DeleteMovesToTheTrash) {
    write(folder() / "doomed");
    start(1);
    selectFirst("doomed");
    keyboard().tap("Delete");
    EXPECT_TRUE(eventually([] { return isThere(folder() / "doomed"); }, Eq(false)));
    EXPECT_TRUE(eventually([] { return isThere(trash() / "files" / "doomed"); }, Eq(true)));
}

TEST_F(FileManager, CutAndPasteMovesAFileToTheParentFolder) {
    write(folder() / "inner/moved");
    write(folder() / "other");
    start(1, folder() / "inner");
    selectFirst("moved");
    keyboard().chord({"Control_L", "x"});
    goUp(2);
    keyboard().chord({"Control_L", "v"});
    EXPECT_TRUE(eventually([] { return isThere(folder() / "moved"); }, Eq(true)));
    EXPECT_TRUE(eventually([] { return isThere(folder() / "inner/moved"); }, Eq(false)));
}

TEST_F(FileManager, ACopyInBetweenForgetsTheCut) {
    write(folder() / "inner/stays");
    write(folder() / "other");
    start(1, folder() / "inner");
    selectFirst("stays");
    keyboard().chord({"Control_L", "x"});
    keyboard().chord({"Control_L", "c"});
    goUp(2);
    keyboard().chord({"Control_L", "v"});
    EXPECT_TRUE(eventually([] { return isThere(folder() / "stays"); }, Eq(true)));
    EXPECT_TRUE(isThere(folder() / "inner/stays"));
}

}  // namespace
}  // namespace orvel::test
