#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_panel_windows.hpp"
#include "platform/macos/mac_qt_view.hpp"
#include "platform/macos/mac_quick_views.hpp"
#include "tests/macos/run/mac_test.hpp"
#include "tests/support/scratch_home.hpp"

#import <AppKit/AppKit.h>

#include <QQmlEngine>

#include <fstream>

namespace orvel::macos {
namespace {

class MacQuickViewsTest : public MacTest {
protected:
    MacQuickViewsTest() {
        views->setContent(PanelId::settings,
                          content("probe.qml", "Item {\n"
                                               "  implicitWidth: 120\n"
                                               "  implicitHeight: 60\n"
                                               "  property int given: 0\n"
                                               "  property bool isOnScreen: "
                                               "Window.window !== null && Window.window.visible\n"
                                               "}\n"));
        panels = makePanels(*views);
    }

    void TearDown() override {
        panels.reset();
        views.reset();
        MacTest::TearDown();
    }

    qt::PanelContent content(const std::string& name, const std::string& text) {
        const std::string path = folder.path() + "/" + name;
        std::ofstream(path) << "import QtQuick\nimport QtQuick.Window\n" << text;
        return {QUrl::fromLocalFile(QString::fromStdString(path)), {{"given", 7}}};
    }
    std::unique_ptr<Panel> makePanel(double padding = 0) {
        return panels->create({.id = PanelId::settings,
                               .contentRect = {0, 0, 300, 200},
                               .canBecomeKey = true,
                               .contentPadding = padding});
    }
    QQuickItem* root() { return views->rootOf(PanelId::settings); }
    static NSWindow* window() { return (NSWindow*)windowOfPanel(PanelId::settings); }

    test::ScratchFolder folder;
    QQmlEngine engine;
    std::optional<MacQuickViews> views{std::in_place, engine};
    std::unique_ptr<Panels> panels;
};

TEST_F(MacQuickViewsTest, PutsTheViewOfAQtWindowIntoThePanel) {
    const auto panel = makePanel();
    ASSERT_NE(root(), nullptr);
    EXPECT_EQ(root()->property("given").toInt(), 7);
    const void* view = nativeViewOf(*root()->window());
    EXPECT_NE(window().contentView, nil);
    EXPECT_NE((const void*)window().contentView, view) << "Qt keeps no window of its own";
    EXPECT_EQ(fake::firstResponder(window()), view);
}

TEST_F(MacQuickViewsTest, TheContentFollowsTheSizeOfThePanelWithRoomAround) {
    const auto panel = makePanel(15);
    EXPECT_EQ(root()->size(), QSizeF(270, 170));
    panel->setFrame({10, 20, 500, 400});
    EXPECT_EQ(root()->size(), QSizeF(470, 370));
    EXPECT_EQ(root()->position(), QPointF(15, 15));
}

TEST_F(MacQuickViewsTest, TheContentKnowsWhetherItIsOnScreen) {
    const auto panel = makePanel();
    const auto isOnScreen = [this] { return root()->property("isOnScreen").toBool(); };
    EXPECT_FALSE(isOnScreen());
    panel->makeKeyAndOrderFront();
    EXPECT_TRUE(isOnScreen());
    panel->orderOut();
    EXPECT_FALSE(isOnScreen());
    panel->orderFrontRegardless();
    EXPECT_TRUE(isOnScreen());
}

TEST_F(MacQuickViewsTest, ThePanelAsksForTheSizeOfItsContent) {
    EXPECT_EQ(makePanel(15)->fittingSize(), (Size{150, 90}));
    const auto empty = panels->create({.id = PanelId::clipboard, .contentRect = {0, 0, 80, 40}});
    EXPECT_EQ(empty->fittingSize(), (Size{80, 40}));
}

TEST_F(MacQuickViewsTest, ContentThatIsTakenOutLeavesAnEmptyPanel) {
    const auto panel = makePanel();
    panel->makeKeyAndOrderFront();
    views->removeContent(PanelId::settings);
    EXPECT_EQ(root(), nullptr);
    EXPECT_TRUE(panel->isVisible());
    panel->setFrame({0, 0, 50, 50});
}

TEST_F(MacQuickViewsTest, APanelThatIsMadeAgainHasItsContentAgain) {
    makePanel().reset();
    const auto panel = makePanel();
    ASSERT_NE(root(), nullptr);
    panel->setFrame({0, 0, 640, 480});
    EXPECT_EQ(root()->size(), QSizeF(640, 480));
}

TEST_F(MacQuickViewsTest, ContentThatCannotBeMadeLeavesAnEmptyPanel) {
    views->setContent(PanelId::startMenu, content("broken.qml", "Item { nonsense\n"));
    const auto panel = panels->create({.id = PanelId::startMenu, .contentRect = {0, 0, 9, 9}});
    panel->makeKeyAndOrderFront();
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(views->rootOf(PanelId::startMenu), nullptr);
}

}  // namespace
}  // namespace orvel::macos
