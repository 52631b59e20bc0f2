#include "tests/support/effect_matchers.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel::memory {
namespace {

using namespace orvel::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MemoryPanelsTest : public MemoryFixture {};
class MemoryMenusTest : public MemoryFixture {
protected:
    std::vector<std::size_t> chosen;

    void popUp(std::string_view id, std::optional<PanelId> panel = std::nullopt) {
        NativeMenu menu;
        menu.id = id;
        menu.items.resize(3);
        menu.items[0].title = "开机自启";
        menu.items[0].isChecked = true;
        menu.items[2].title = "退出程序";
        menu.items[2].keyEquivalent = "q";
        desk.nativeMenus.popUp(std::move(menu), {panel, {10, 324}},
                               [this](std::size_t index) { chosen.push_back(index); });
    }
};
class MemoryMonitorsTest : public MemoryFixture {};

TEST_F(MemoryPanelsTest, TellsWhatIsSetWhenAPanelIsMade) {
    const auto plain =
        desk.panels.create({.id = PanelId::settings, .contentRect = {0, 0, 350, 550}});
    const auto full = desk.panels.create({.id = PanelId::taskbar,
                                          .contentRect = {0, 0, 1440, 320},
                                          .level = kPopUpMenuLevel,
                                          .collectionBehavior = 81});
    EXPECT_THAT(
        effects(),
        ElementsAre(R"({"panel":{"id":"settings","op":"create","frame":[0,0,350,550],)"
                    R"("styleMask":128}})",
                    R"({"panel":{"id":"taskbar","op":"create","frame":[0,0,1440,320],"level":101,)"
                    R"("styleMask":128,"collectionBehavior":81}})"));
}

TEST_F(MemoryPanelsTest, TellsEveryChangeAlsoOnesWithoutEffect) {
    const auto panel =
        desk.panels.create({.id = PanelId::startMenu, .contentRect = {0, 0, 10, 10}});
    lookAway();
    panel->orderOut();
    panel->makeKeyAndOrderFront();
    panel->orderFrontRegardless();
    panel->setFrame({1, 2, 3, 4});
    panel->setFrameOrigin({5.5, 6});
    EXPECT_THAT(
        effects(),
        ElementsAre(R"({"panel":{"id":"startMenu","op":"orderOut"}})",
                    R"({"panel":{"id":"startMenu","op":"makeKeyAndOrderFront"}})",
                    R"({"panel":{"id":"startMenu","op":"orderFrontRegardless"}})",
                    R"({"panel":{"id":"startMenu","op":"setFrame","frame":[1,2,3,4]}})",
                    R"({"panel":{"id":"startMenu","op":"setFrameOrigin","origin":[5.5,6]}})"));
    EXPECT_EQ(panel->frame(), (ScreenRect{5.5, 6, 3, 4}));
}

TEST_F(MemoryPanelsTest, KnowsThePanelsThatExist) {
    EXPECT_EQ(desk.panels.existing(PanelId::clipboard), nullptr);
    auto panel = desk.panels.create({.id = PanelId::clipboard, .contentRect = {1, 2, 3, 4}});
    panel->orderFrontRegardless();
    ASSERT_NE(desk.panels.existing(PanelId::clipboard), nullptr);
    EXPECT_TRUE(desk.panels.existing(PanelId::clipboard)->isVisible);
    panel.reset();
    EXPECT_EQ(desk.panels.existing(PanelId::clipboard), nullptr);
}

TEST_F(MemoryMenusTest, TellsItemsAndPlace) {
    popUp("statusItem");
    popUp("geekMenu", PanelId::taskbar);
    const std::string items = R"("items":[{"title":"开机自启","checked":true},{"separator":true},)"
                              R"({"title":"退出程序","key":"q"}],"at":[10,324],)";
    EXPECT_THAT(effects(),
                ElementsAre(R"({"menu":{"id":"statusItem",)" + items + R"("in":"statusButton"}})",
                            R"({"menu":{"id":"geekMenu",)" + items + R"("in":"taskbar"}})"));
}

TEST_F(MemoryMenusTest, AMenuGoesAwayOnceAnItemWasPicked) {
    popUp("statusItem");
    EXPECT_TRUE(desk.nativeMenus.choose("退出程序"));
    EXPECT_FALSE(desk.nativeMenus.isUp());
    EXPECT_FALSE(desk.nativeMenus.choose("退出程序"));
    EXPECT_THAT(chosen, ElementsAre(2U));
}

TEST_F(MemoryMenusTest, AnUnknownTitlePicksNothing) {
    popUp("statusItem");
    EXPECT_FALSE(desk.nativeMenus.choose("关于"));
    EXPECT_FALSE(desk.nativeMenus.choose("")) << "separators have no title";
    EXPECT_TRUE(desk.nativeMenus.isUp());
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(MemoryMenusTest, AnItemMayPopUpAnotherMenu) {
    NativeMenu menu;
    menu.id = "taskbarIcon";
    menu.items.resize(1);
    menu.items[0].title = "更多";
    desk.nativeMenus.popUp(std::move(menu), {}, [this](std::size_t) { popUp("startButton"); });
    EXPECT_TRUE(desk.nativeMenus.choose("更多"));
    EXPECT_TRUE(desk.nativeMenus.choose("开机自启"));
    EXPECT_THAT(chosen, ElementsAre(0U));
}

TEST_F(MemoryMonitorsTest, TellsOfInstallingAndRemoving) {
    auto monitor = desk.eventMonitors.add(MonitorScope::global, 10, "settings",
                                          [](const MonitoredEvent&) { return true; });
    EXPECT_EQ(desk.eventMonitors.installed().size(), 1U);
    monitor.reset();
    EXPECT_TRUE(desk.eventMonitors.installed().empty());
    EXPECT_THAT(effects(), ElementsAre(R"({"monitor":{"op":"add","scope":"global","mask":10,)"
                                       R"("owner":"settings"}})",
                                       R"({"monitor":{"op":"remove","scope":"global","mask":10,)"
                                       R"("owner":"settings"}})"));
}

TEST_F(MemoryMonitorsTest, AConsumedEventReachesNoLaterMonitor) {
    int later = 0;
    const auto consuming = desk.eventMonitors.add(MonitorScope::local, 10, "clipboard",
                                                  [](const MonitoredEvent&) { return false; });
    const auto other = desk.eventMonitors.add(MonitorScope::local, 10, "startMenu",
                                              [&](const MonitoredEvent&) { return ++later > 0; });
    EXPECT_FALSE(desk.eventMonitors.deliver(
        MonitorScope::local,
        {.type = monitor_mask::leftMouseDown, .keyCode = 0, .window = PanelId::startMenu}));
    EXPECT_EQ(later, 0);
}

TEST_F(MemoryMonitorsTest, ObserversAreToldOfByTheirSystemNames) {
    auto key = desk.notifications.observe(NotificationName::windowDidResignKey, PanelId::startMenu,
                                          "startMenu", [] {});
    auto active = desk.notifications.observe(NotificationName::applicationDidResignActive,
                                             std::nullopt, "startMenu", [] {});
    key.reset();
    EXPECT_THAT(effects(),
                ElementsAre(R"({"observer":{"op":"add","name":"NSWindowDidResignKeyNotification",)"
                            R"("owner":"startMenu"}})",
                            R"({"observer":{"op":"add","name":)"
                            R"("NSApplicationDidResignActiveNotification","owner":"startMenu"}})",
                            R"({"observer":{"op":"remove","name":)"
                            R"("NSWindowDidResignKeyNotification","owner":"startMenu"}})"));
}

TEST(MemoryDesktopTest, WhatIsHeldMayOutliveTheDesktop) {
    auto desk = std::make_unique<MemoryDesktop>();
    const auto panel = desk->panels.create({.id = PanelId::settings, .contentRect = {}});
    const auto monitor = desk->eventMonitors.add(MonitorScope::global, 10, "settings",
                                                 [](const MonitoredEvent&) { return true; });
    const auto observer = desk->notifications.observe(NotificationName::windowDidResignKey,
                                                      std::nullopt, "startMenu", [] {});
    const auto timer = desk->runLoop.every(std::chrono::seconds(1), "engine", [] {});
    desk.reset();
    // What they let go of at the end of this test is theirs alone, as the sanitizers can tell.
    EXPECT_FALSE(panel->isVisible());
}

}  // namespace
}  // namespace orvel::memory
