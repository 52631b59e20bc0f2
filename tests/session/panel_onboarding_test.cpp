#include "tests/session/panel_session.hpp"
#include "tests/support/poll_until.hpp"

namespace orvel::test {
namespace {

using rig::OrvelProgram;

/// What the panel shows while the desktop lacks something.
class PanelOnboardingTest : public PanelSessionTest {
protected:
    static void unplugKeyboards() {
        keyboard().unplug();
        secondKeyboard().unplug();
    }
    static bool shows(const std::string& role, const std::string& name) {
        return seen().find(role, name).has_value();
    }
};

TEST_F(PanelOnboardingTest, WithoutAKeyboardThePageSaysSoUntilOneIsPluggedIn) {
    OrvelProgram orvel = start({{"card_eject", true}});
    unplugKeyboards();
    EXPECT_TRUE(run({"panel"}).success());
    ASSERT_TRUE(eventually([] { return isPanelOpen(); }, true));
    EXPECT_TRUE(eventually([] { return shows("heading", "还差一步"); }, true));
    EXPECT_FALSE(shows("check box", "全部功能"));
    keyboard().plug();
    EXPECT_TRUE(eventually([] { return shows("label", "键盘，已具备"); }, true));
    EXPECT_TRUE(eventually([] { return shows("check box", "全部功能"); }, true));
    secondKeyboard().plug();
    rig::KeyProbe probe = startProbe();
    keyboard().chord({"Shift_L", "BackSpace"});
    EXPECT_TRUE(eventually([&] { return spelled(probe.keys()); }, testing::Contains("+Delete")));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelOnboardingTest, AKeyboardThatIsPulledWhileThePanelIsOpenIsMissed) {
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    EXPECT_TRUE(eventually([] { return shows("check box", "全部功能"); }, true));
    unplugKeyboards();
    EXPECT_TRUE(eventually([] { return shows("heading", "还差一步"); }, true));
    click(seen().waitFor("push button", "先看看设置").frame);
    EXPECT_TRUE(eventually([] { return shows("check box", "全部功能"); }, true));
    keyboard().plug();
    secondKeyboard().plug();
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
