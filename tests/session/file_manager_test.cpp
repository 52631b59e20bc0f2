#include "tests/session/session_test.hpp"
#include "tests/support/poll_until.hpp"
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

std::string program() { return std::string(std::getenv("ORVEL_BUILD_DIR")) + "/orvel-session"; }

/// A file manager driven from the keyboard while the program runs: what counts is what becomes of
/// the files.
class FileManager : public SessionTest {
protected:
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

    /// Opens the folder in front and starts the program.
    void start(const fs::path& shown = folder()) {
        manager_ = std::make_unique<rig::ChildProcess>(rig::Command{
            .arguments = {"pcmanfm", shown.string()}, .environment = desktop().environment()});
        window_ = rig::waitForWindow(desktop().x(), "Pcmanfm");
        orvel_.emplace(program(), desktop().environment());
        rig::focusWindow(desktop().x(), window_);
    }
    void selectFirst() { keyboard().tap("Home"); }
    /// Pastes into the folder just entered; a paste before its entries are loaded is dropped by
    /// the file manager, so it is given again.
    static bool pasteUntilThereIs(const fs::path& path) {
        constexpr int kMostTries = 8;
        for (int each = 0; each < kMostTries; ++each) {
            keyboard().chord({"Control_L", "v"});
            if (rig::pollUntil([&] { return fs::exists(path); }, std::chrono::milliseconds(1500)))
                return true;
        }
        return false;
    }
    std::string title() { return rig::titleOf(desktop().x(), window_); }

    std::unique_ptr<rig::ChildProcess> manager_;
    std::optional<rig::OrvelProgram> orvel_;
    rig::WindowId window_ = 0;
};

bool isThere(const fs::path& path) { return fs::exists(path); }

TEST_F(FileManager, ReturnOpensAFolderAndTheSideButtonsGoBackAndForward) {
    fs::create_directories(folder() / "inner");
    start();
    ASSERT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
    selectFirst();
    keyboard().tap("Return");
    EXPECT_TRUE(eventually([&] { return title(); }, HasSubstr("inner")));
    mouse().click(rig::Button::back);
    EXPECT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
    mouse().click(rig::Button::forward);
    EXPECT_TRUE(eventually([&] { return title(); }, HasSubstr("inner")));
}

TEST_F(FileManager, F2RenamesAndTypingTheNameIsLeftAlone) {
    write(folder() / "old");
    start();
    selectFirst();
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
    start();
    selectFirst();
    keyboard().tap("Delete");
    EXPECT_TRUE(eventually([] { return isThere(folder() / "doomed"); }, Eq(false)));
    EXPECT_TRUE(eventually([] { return isThere(trash() / "files" / "doomed"); }, Eq(true)));
}

TEST_F(FileManager, CutAndPasteMovesAFileToTheParentFolder) {
    write(folder() / "inner/moved");
    start(folder() / "inner");
    selectFirst();
    keyboard().chord({"Control_L", "x"});
    keyboard().chord({"Control_L", "Up"});
    ASSERT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
    EXPECT_TRUE(pasteUntilThereIs(folder() / "moved"));
    EXPECT_TRUE(eventually([] { return isThere(folder() / "inner/moved"); }, Eq(false)));
}

TEST_F(FileManager, ACopyInBetweenForgetsTheCut) {
    write(folder() / "inner/stays");
    start(folder() / "inner");
    selectFirst();
    keyboard().chord({"Control_L", "x"});
    keyboard().chord({"Control_L", "c"});
    keyboard().chord({"Control_L", "Up"});
    ASSERT_TRUE(eventually([&] { return title(); }, HasSubstr("work")));
    EXPECT_TRUE(pasteUntilThereIs(folder() / "stays"));
    EXPECT_TRUE(isThere(folder() / "inner/stays"));
}

}  // namespace
}  // namespace orvel::test
