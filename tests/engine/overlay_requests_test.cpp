#include "tests/engine/engine_fixture.hpp"

namespace orvel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OverlayRequests : public EngineFixture {};

TEST_F(OverlayRequests, APlainEscapeClosesTheStartMenuThatShows) {
    overlay.startMenuShows = true;
    type(key::escape);
    EXPECT_THAT(effects(), ElementsAre(logged("🚪 捕获到纯净 Esc：自动关闭开始菜单"), swallowed(),
                                       swallowed()));
    EXPECT_THAT(takeCommands(), ElementsAre("toggle start menu"));
}

TEST_F(OverlayRequests, AModifierWithEscapeLeavesTheStartMenuOpen) {
    overlay.startMenuShows = true;
    for (const EventFlags flags : {flag::shift, flag::control, flag::command}) {
        type(key::escape, flags);
    }
    EXPECT_THAT(takeCommands(), IsEmpty());
    EXPECT_TRUE(overlay.startMenuShows);
}

TEST_F(OverlayRequests, ALoneWinPressTogglesTheStartMenuAfterAMoment) {
    prefer("card_taskbar", true);
    send(flagsChanged(key::leftControl, flag::control));
    send(flagsChanged(key::leftControl, 0));
    advance(0.049);
    EXPECT_THAT(takeCommands(), IsEmpty());
    advance(0.001);
    EXPECT_THAT(takeCommands(), ElementsAre("toggle start menu"));
}

TEST_F(OverlayRequests, WinVOpensTheClipboardAndNoStartMenu) {
    prefer("card_taskbar", true);
    prefer("card_win_advanced", true);
    send(flagsChanged(key::leftControl, flag::control));
    type(key::v, flag::control);
    send(flagsChanged(key::leftControl, 0));
    advance(1);
    EXPECT_THAT(takeCommands(), ElementsAre("toggle clipboard"));
}

TEST_F(OverlayRequests, WinXOpensTheSystemMenuAfterAMoment) {
    prefer("card_win_advanced", true);
    press(key::x, flag::control);
    advance(0.149);
    EXPECT_THAT(takeCommands(), IsEmpty());
    advance(0.001);
    EXPECT_THAT(takeCommands(), ElementsAre("geek menu"));
}

TEST_F(OverlayRequests, WinDigitsFollowTheTaskbarWhileItIsOn) {
    prefer("card_syscmd", true);
    prefer("card_taskbar", true);
    overlay.taskbarIds = {"com.apple.mail", "com.apple.Safari"};
    desk.world.installed = {{"com.apple.Safari", "/Applications/Safari.app", "Safari"}};
    type(key::digit2, flag::control);
    type(key::digit3, flag::control);
    EXPECT_THAT(
        effects(),
        ElementsAre(logged("🚀 触发 Win+2：启动任务栏第 2 个应用"),
                    effectLine("openApp", R"({"path":"/Applications/Safari.app"})"), swallowed(),
                    swallowed(), logged("⚠️ 找不到第 3 个任务栏应用"), swallowed(),
                    swallowed()));
}

class MiddleClick : public EngineFixture {
protected:
    void SetUp() override {
        EngineFixture::SetUp();
        prefer("card_finder", true);
        desk.world.frontmost = "com.apple.finder";
        desk.world.mouse = {300, 400};
    }
    void answer(std::string output) {
        desk.world.tasks = {{.contains = "osascript", .result = std::move(output), .error = {}}};
        send(buttonDown(2));
    }
};

TEST_F(MiddleClick, OpensTheMenuForTheFolderInFront) {
    answer("file:///Users/user/My%20Files/%E6%96%87/\n");
    EXPECT_THAT(takeCommands(),
                ElementsAre("finder menu at 300,400 for /Users/user/My Files/文: 🏠 Users user My "
                            "Files 文"));
}

TEST_F(MiddleClick, OpensTheMenuAtTheRootFolder) {
    answer("file:///");
    EXPECT_THAT(takeCommands(), ElementsAre("finder menu at 300,400 for /: 🏠"));
}

TEST_F(MiddleClick, OpensTheMenuAtTheRootWhenTheFolderIsUnknown) {
    answer("ERROR: no window");
    answer("");
    EXPECT_THAT(takeCommands(), ElementsAre("finder menu at 300,400 for /: 🏠 根目录",
                                            "finder menu at 300,400 for /: 🏠 根目录"));
}

TEST_F(MiddleClick, ShowsNoMenuWhenTheQueryCannotBeLaunched) {
    desk.world.tasks = {{.contains = "osascript", .result = {}, .error = "gone"}};
    send(buttonDown(2));
    EXPECT_THAT(takeCommands(), IsEmpty());
}

}  // namespace
}  // namespace orvel::test
