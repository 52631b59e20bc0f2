#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/windows.hpp"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using rig::OrvelProgram;
using testing::Optional;

/// A text editor driven from the devices while the program runs: what counts is the text that it
/// saves.
class OrvelEditorTest : public TapSessionTest {
protected:
    void TearDown() override {
        editor_.reset();
        if (orvel_) {
            EXPECT_TRUE(orvel_->stop().success());
        }
        orvel_.reset();
        fs::remove(file());
        TapSessionTest::TearDown();
    }

    static fs::path file() { return desktop().home().path() / "note.txt"; }

    /// Opens a file with this text and starts the program.
    void start(const rig::Settings& settings, const std::string& text = {}) {
        std::ofstream(file()) << text;
        // A caret that blinks would change every picture.
        fs::create_directories(desktop().home().config() / "gtk-3.0");
        std::ofstream(desktop().home().config() / "gtk-3.0/settings.ini")
            << "[Settings]\ngtk-cursor-blink=0\n";
        editor_ = std::make_unique<rig::ChildProcess>(rig::Command{
            .arguments = {"mousepad", file().string()}, .environment = desktop().environment()});
        window_ = rig::waitForWindow(desktop().x(), "Mousepad");
        rig::writeSettings(desktop().environment(), settings);
        orvel_.emplace(ORVEL_PROGRAM, desktop().environment(), std::vector<std::string>());
        rig::focusWindow(desktop().x(), window_);
    }
    static void command(const char* key) { keyboard().chord({"Control_L", key}); }
    /// The text as it is now: saved again and again, since the editor may be busy.
    static std::string text() {
        command("s");
        return rig::contentOf(file());
    }
    /// What an editor adds at the end of the last line does not matter.
    static auto is(const std::string& text) { return testing::AnyOf(text, text + '\n'); }

    /// A part of the text as it shows, apart from what fades in and out around it.
    rig::Picture shown() {
        const rig::WindowFrame frame = rig::frameOf(desktop().x(), window_);
        return rig::pictureOf(desktop().x(), desktop().x().root(), frame.x + 10, frame.y + 100, 200,
                              200);
    }

    std::unique_ptr<rig::ChildProcess> editor_;
    std::optional<OrvelProgram> orvel_;
    rig::WindowId window_ = 0;
};

TEST_F(OrvelEditorTest, CtrlYRedoesWhatCtrlZTookBack) {
    start(rig::usualMapping());
    keyboard().type("word");
    EXPECT_TRUE(eventually([] { return text(); }, is("word")));
    command("z");
    EXPECT_TRUE(eventually([] { return text(); }, testing::AnyOf("", "\n", is("wor"))));
    command("y");
    EXPECT_TRUE(eventually([] { return text(); }, is("word")));
}

TEST_F(OrvelEditorTest, CtrlCCopiesAndCtrlVPastes) {
    start(rig::usualMapping());
    keyboard().type("ab");
    command("a");
    command("c");
    keyboard().tap("End");
    command("v");
    EXPECT_TRUE(eventually([] { return text(); }, is("abab")));
}

TEST_F(OrvelEditorTest, InALayoutThatIsNotLatinShortcutsAreTheKeysPlaces) {
    desktop().server().setLayout("us,ru");
    start(rig::usualMapping());
    state().lockLayoutGroup(1);
    keyboard().type("f");
    command("a");
    command("c");
    keyboard().tap("End");
    command("v");
    command("v");
    EXPECT_TRUE(eventually([] { return text(); }, is("ааа")));
    state().lockLayoutGroup(0);
    desktop().server().setLayout("us");
}

TEST_F(OrvelEditorTest, AReversedWheelScrollsTheTextTheOtherWay) {
    auto settings = rig::usualMapping();
    settings["card_scroll"] = true;
    std::string lines;
    for (int i = 1; i <= 400; ++i) lines += std::to_string(i) + '\n';
    start(settings, lines);
    state().warpPointer(rig::frameOf(desktop().x(), window_).centre());
    EXPECT_TRUE(eventually([] { return text(); }, is(lines)));
    rig::Picture beginning = shown();
    const auto isStill = [&] { return std::exchange(beginning, shown()) == beginning; };
    EXPECT_TRUE(eventually(isStill, true));
    const auto isBeginning = [&] { return shown() == beginning; };
    // Away from the person the text moves up, as if it were pushed: there is more of it below.
    for (int notch = 0; notch < 5; ++notch) mouse().turnWheel(-1);
    EXPECT_TRUE(eventually(isBeginning, false));
    for (int notch = 0; notch < 20; ++notch) mouse().turnWheel(1);
    EXPECT_TRUE(eventually(isBeginning, true));
}

/// The wheel as an application sees it, while the settings change under the running program.
class OrvelWheelTest : public TapSessionTest {
protected:
    static void set(const char* key, const char* value) {
        rig::runTool({ORVEL_PROGRAM, "prefs", "set", key, value}, desktop().environment());
    }
    /// The button that one notch towards the person becomes.
    static std::optional<int> turned(rig::KeyProbe& probe) {
        probe.clear();
        mouse().turnWheelAsButtons(1);
        const auto events = probe.waitForButtonsAndScrolls(2);
        return events.size() == 2 ? std::optional(events.front().detail) : std::nullopt;
    }
};

TEST_F(OrvelWheelTest, TurnsAroundAndBackEachTimeItsSwitchIsTurned) {
    rig::writeSettings(desktop().environment(), rig::usualMapping());
    OrvelProgram orvel(ORVEL_PROGRAM, desktop().environment(), {});
    rig::KeyProbe probe = startProbe();
    state().warpPointer({probe.centreX(), probe.centreY()});
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        set("card_scroll", "true");
        EXPECT_TRUE(eventually([&] { return turned(probe); }, Optional(4)));
        EXPECT_THAT(turned(probe), Optional(4)) << "and it stays so";
        set("card_scroll", "false");
        EXPECT_TRUE(eventually([&] { return turned(probe); }, Optional(5)));
        EXPECT_THAT(turned(probe), Optional(5)) << "and it stays so";
    }
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
