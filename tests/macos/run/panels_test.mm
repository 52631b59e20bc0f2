#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"
#include "platform/macos/mac_panels.hpp"
#include "tests/macos/run/mac_test.hpp"

#import <AppKit/AppKit.h>

namespace orvel::macos {
namespace {

class MacPanelsTest : public MacTest {
protected:
    void TearDown() override {
        panels.reset();
        MacTest::TearDown();
    }
    struct NoContents final : PanelContents {
        CFTypeRef viewOf(PanelId, double) override { return nullptr; }
        void setShown(PanelId panel, bool isShown) override {
            told.emplace_back(std::string(panelName(panel)) + (isShown ? " on" : " off"));
        }
        std::vector<std::string> told;
    } contents;
    std::unique_ptr<Panels> panels = makePanels(contents);

    static NSWindow* window(PanelId id) { return (NSWindow*)windowOfPanel(id); }
};

TEST_F(MacPanelsTest, APanelTakesTheFocusOfNoApplication) {
    const auto panel = panels->create({.id = PanelId::clipboard,
                                       .contentRect = {0, 0, 10, 10},
                                       .styleMask = kStyleNonactivatingPanel,
                                       .canBecomeKey = true});
    EXPECT_EQ(fake::styleOf(window(PanelId::clipboard)), 0x80U);
    panel->orderFrontRegardless();
    panel->makeKeyAndOrderFront();
    EXPECT_EQ(mac().activations, 0);
    EXPECT_TRUE(window(PanelId::clipboard).canBecomeKeyWindow);
}

TEST_F(MacPanelsTest, StaysAroundWhateverHappensToTheProgram) {
    const auto panel = panels->create({.id = PanelId::taskbar,
                                       .contentRect = {0, 0, 10, 10},
                                       .level = kPopUpMenuLevel,
                                       .collectionBehavior = 17,
                                       .acceptsMouseMoved = true});
    NSWindow* made = window(PanelId::taskbar);
    EXPECT_FALSE(made.releasedWhenClosed);
    EXPECT_FALSE(made.hidesOnDeactivate);
    EXPECT_FALSE(made.opaque);
    EXPECT_FALSE(made.canBecomeKeyWindow);
    EXPECT_TRUE(made.acceptsMouseMovedEvents);
    EXPECT_EQ(made.level, 101);
    EXPECT_EQ(made.collectionBehavior, 17U);
}

TEST_F(MacPanelsTest, TellsItsContentsWhenTheyComeOnScreenAndGo) {
    auto panel = panels->create({.id = PanelId::settings, .contentRect = {0, 0, 10, 10}});
    panel->makeKeyAndOrderFront();
    panel->orderOut();
    panel->orderFrontRegardless();
    panel.reset();
    EXPECT_THAT(contents.told, ::testing::ElementsAre("settings on", "settings off", "settings on",
                                                      "settings off"));
}

}  // namespace
}  // namespace orvel::macos
