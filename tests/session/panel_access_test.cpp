#include "tests/session/panel_session.hpp"
#include "tests/support/poll_until.hpp"

#include <algorithm>

namespace orvel::test {
namespace {

using rig::Accessible;
using rig::OrvelProgram;

/// The panel without a mouse: by keyboard, and as a screen reader shows and works it.
class PanelAccessTest : public PanelSessionTest {
protected:
    static void open() {
        EXPECT_TRUE(run({"panel"}).success());
        waitForPanel();
    }
    static std::string focused() {
        for (const Accessible& item : seen().items()) {
            if (item.is("focused") && item.role != "frame") return item.role + ' ' + item.name;
        }
        return "nothing";
    }
};

TEST_F(PanelAccessTest, AScreenReaderFindsASwitchSeesItsStateAndTurnsIt) {
    OrvelProgram orvel = start();
    open();
    const Accessible item = switchOf("窗口磁吸管理");
    EXPECT_FALSE(item.is("checked"));
    EXPECT_THAT(item.actions, testing::Contains("Toggle"));
    seen().act(item, "Toggle");
    EXPECT_TRUE(eventually([] { return isOn("窗口磁吸管理"); }, true));
    seen().act(item, "Press");
    EXPECT_TRUE(eventually([] { return isOn("窗口磁吸管理"); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelAccessTest, EveryControlLiesInsideThePanelWhereItIsSaidToBe) {
    OrvelProgram orvel = start();
    open();
    seen().waitFor("check box", "全部功能");
    const rig::WindowFrame frame = rig::frameOf(desktop().x(), *panel());
    const auto items = seen().items();
    const auto isControl = [](const Accessible& item) {
        return item.role == "check box" || item.role.find("button") != std::string::npos;
    };
    EXPECT_GE(std::ranges::count_if(items, isControl), 15);
    for (const Accessible& item : items) {
        if (!isControl(item)) continue;
        EXPECT_GE(item.frame.x, frame.x) << item;
        EXPECT_LE(item.frame.x + item.frame.width, frame.x + frame.width) << item;
        EXPECT_GE(item.frame.width, 24) << item;
        EXPECT_GE(item.frame.height, 24) << item;
    }
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelAccessTest, TabSpaceArrowsAndEscapeAreEnough) {
    OrvelProgram orvel = start();
    open();
    const auto tabToMaster = [] {
        if (focused() != "check box 全部功能") keyboard().tap("Tab");
        return focused();
    };
    EXPECT_TRUE(eventually(tabToMaster, "check box 全部功能"));
    keyboard().tap("space");
    EXPECT_TRUE(eventually([] { return isOn("全部功能"); }, true));
    const auto tabToCard = [] {
        if (focused() != "check box 核心修饰键映射") keyboard().tap("Tab");
        return focused();
    };
    EXPECT_TRUE(eventually(tabToCard, "check box 核心修饰键映射"));
    keyboard().tap("Right");
    EXPECT_TRUE(eventually([] { return focused(); }, "check box 正向删除功能"));
    keyboard().tap("space");
    EXPECT_TRUE(eventually([] { return isOn("正向删除功能"); }, false));
    EXPECT_FALSE(isOn("全部功能"));
    keyboard().tap("Escape");
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
