#include "app/application.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel {
namespace {

class StatusItemTest : public test::MemoryFixture {
protected:
    void SetUp() override {
        app.delegate().activateMainApp();
        drain();
        lookAway();
    }

    void click() { desk.statusBar.click({}); }
    void clickWith(StatusItemClick how) { desk.statusBar.click(how); }
    void pressElsewhere() {
        desk.eventMonitors.deliver(MonitorScope::global, {monitor_mask::leftMouseDown, 0, {}});
    }

    Application app{desk.ports()};
};

TEST_F(StatusItemTest, AClickShowsThePanelAndTheNextHidesIt) {
    click();
    EXPECT_TRUE(app.settingsPanel().isVisible());
    click();
    EXPECT_FALSE(app.settingsPanel().isVisible());
}

TEST_F(StatusItemTest, ThePressThatClosesThePanelDoesNotOpenItAgainOnRelease) {
    click();
    pressElsewhere();
    ASSERT_FALSE(app.settingsPanel().isVisible());
    click();
    EXPECT_FALSE(app.settingsPanel().isVisible());
}

TEST_F(StatusItemTest, ALaterClickOpensThePanelThatAPressClosed) {
    click();
    pressElsewhere();
    advance(0.3);
    click();
    EXPECT_TRUE(app.settingsPanel().isVisible());
}

TEST_F(StatusItemTest, ARightClickOpensTheMenuThoughItsPressClosedThePanel) {
    click();
    pressElsewhere();
    clickWith({.button = StatusItemButton::right});
    EXPECT_TRUE(desk.nativeMenus.choose("退出程序"));
}

TEST_F(StatusItemTest, ShowingThePanelAgainBringsItToTheFront) {
    app.settingsPanel().show();
    lookAway();
    app.settingsPanel().show();
    EXPECT_TRUE(app.settingsPanel().isVisible());
    EXPECT_EQ(effects().front(), R"({"panel":{"id":"settings","op":"makeKeyAndOrderFront"}})");
}

}  // namespace
}  // namespace orvel
