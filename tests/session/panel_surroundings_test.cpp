#include "tests/session/panel_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/compositor.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/windows.hpp"

#include <array>
#include <chrono>

namespace orvel::test {
namespace {

using rig::Colour;
using rig::OrvelProgram;
using testing::AllOf;
using testing::Field;
using testing::Gt;

/// The panel on desktops of other kinds than the usual one.
class PanelSurroundingsTest : public PanelSessionTest {
protected:
    /// A point of the panel as it shows on the screen, in pixels from its corner.
    static Colour shownAt(int x, int y) {
        const auto window = panel();
        if (!window) return {};
        const rig::WindowFrame frame = rig::frameOf(desktop().x(), *window);
        return rig::pictureOf(desktop().x(), desktop().x().root(), frame.x + x, frame.y + y, 1, 1)
            .at(0, 0);
    }
    static testing::AssertionResult shows(int x, int y, const testing::Matcher<Colour>& colour) {
        return eventually([&] { return shownAt(x, y); }, colour);
    }
    /// What lies around the arrow and the round corners is the same as beside the panel.
    static void expectDesktopAround() {
        for (const rig::ScreenPoint point : kOutside) {
            EXPECT_TRUE(
                eventually([&] { return shownAt(point.x, point.y) == shownAt(-5, 300); }, true));
        }
    }
    static testing::Matcher<Colour> isLight() { return Field(&Colour::green, Gt(200)); }
    /// The mark in the header.
    static testing::Matcher<Colour> isBlue() {
        return AllOf(Field(&Colour::blue, Gt(180)), Field(&Colour::red, testing::Lt(90)));
    }
    static std::size_t coloursOf(const rig::WindowFrame& frame) {
        return rig::pictureOf(desktop().x(), desktop().x().root(), frame.x, frame.y, frame.width,
                              frame.height)
            .colourCount();
    }
    static rig::WindowFrame openByClick(const rig::Tray& tray) {
        EXPECT_TRUE(eventually([&] { return coloursOf(tray.waitForIcon()); }, Gt(3U)));
        const rig::WindowFrame icon = tray.waitForIcon();
        // A window manager that is still busy with the tray may keep the first click to itself.
        constexpr std::chrono::milliseconds kPerClick{3000};
        const auto clickOpens = [&] {
            if (!isPanelOpen()) click(icon);
            return rig::pollUntil([] { return isPanelOpen(); }, kPerClick);
        };
        EXPECT_TRUE(eventually(clickOpens, true));
        waitForPanel();
        const rig::WindowFrame frame = rig::frameOf(desktop().x(), *panel());
        EXPECT_LE(frame.y + frame.height, icon.y);
        EXPECT_GE(frame.y, 0);
        return frame;
    }
    static constexpr std::array<rig::ScreenPoint, 2> kOutside{{{1, 11}, {100, 4}}};

    static void closeByEscape() {
        keyboard().tap("Escape");
        EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    }
};

class PanelUnderCompositorTest : public PanelSurroundingsTest {};

TEST_F(PanelUnderCompositorTest, TheDesktopShowsAroundTheArrowAndTheRoundCorners) {
    rig::Compositor compositor(environment(), desktop().x());
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    waitForPanel();
    EXPECT_TRUE(shows(6, 300, isLight()));
    EXPECT_TRUE(shows(22, 40, isBlue()));
    expectDesktopAround();
    closeByEscape();
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelUnderCompositorTest, ThePanelIsWholeAgainWhenTheCompositorIsGone) {
    std::optional<rig::Compositor> compositor(std::in_place, environment(), desktop().x());
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    waitForPanel();
    EXPECT_TRUE(shows(6, 300, isLight()));
    compositor.reset();
    closeByEscape();
    EXPECT_TRUE(run({"panel"}).success());
    waitForPanel();
    EXPECT_TRUE(shows(6, 300, isLight()));
    expectDesktopAround();
    EXPECT_TRUE(orvel.stop().success());
}

/// Under the window manager of Xfce.
class PanelOnXfceTest : public PanelSurroundingsTest {
protected:
    static void SetUpTestSuite() {
        startDesktop({.size = {},
                      .windowManager = rig::WindowManager::Kind::xfwm4,
                      .accessibility = rig::SessionBus::Accessibility::on});
    }
};

TEST_F(PanelOnXfceTest, ThePanelStandsByTheIconTakesTheKeyboardAndGivesWay) {
    const rig::Tray tray(environment(), desktop().x());
    OrvelProgram orvel = start();
    for (int time = 0; time < 2; ++time) {
        const rig::WindowFrame frame = openByClick(tray);
        EXPECT_EQ(frame.width, 350);
        EXPECT_EQ(frame.height, 550);
        EXPECT_TRUE(shows(6, 300, isLight()));
        EXPECT_TRUE(shows(22, 40, isBlue()));
        expectDesktopAround();
        // Above its icon the panel has no arrow.
        EXPECT_TRUE(eventually([] { return shownAt(175, 4) == shownAt(-5, 300); }, true));
        // By mouse and by keyboard.
        if (time == 0) {
            click(switchOf("窗口磁吸管理").frame);
            EXPECT_TRUE(eventually([] { return isOn("窗口磁吸管理"); }, true));
            click(kElsewhere);
            EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
        } else {
            closeByEscape();
        }
    }
    EXPECT_TRUE(orvel.stop().success());
}

/// On a screen with twice as many pixels for a point.
class PanelAtDoubleScaleTest : public PanelSurroundingsTest {
protected:
    static void SetUpTestSuite() {
        startDesktop({.size = {1280, 1300},
                      .windowManager = rig::WindowManager::Kind::openbox,
                      .accessibility = rig::SessionBus::Accessibility::on});
    }
    static OrvelProgram startScaled() {
        rig::writeSettings(environment(), {});
        return {frontDoor(), rig::merged(environment(), {{"QT_SCALE_FACTOR", "2"}})};
    }
};

TEST_F(PanelAtDoubleScaleTest, ThePanelIsTwiceAsLargeByTheIconAndItsEdgeIsOnePixel) {
    const rig::Tray tray(environment(), desktop().x());
    OrvelProgram orvel = startScaled();
    const rig::WindowFrame frame = openByClick(tray);
    EXPECT_EQ(frame.width, 700);
    EXPECT_EQ(frame.height, 1100);
    EXPECT_LE(frame.x + frame.width, 1280 - 10);
    EXPECT_TRUE(shows(12, 600, isLight()));
    EXPECT_TRUE(shows(44, 80, isBlue()));
    EXPECT_LT(shownAt(0, 600).green, shownAt(2, 600).green);
    EXPECT_EQ(shownAt(1, 600), shownAt(2, 600));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelAtDoubleScaleTest, ASwitchIsHitWhereItShows) {
    OrvelProgram orvel = startScaled();
    EXPECT_TRUE(run({"panel"}).success());
    waitForPanel();
    EXPECT_TRUE(shows(44, 80, isBlue()));
    EXPECT_FALSE(isOn("全部功能"));
    // The master switch ends 17 points before the panel, 41 below its top.
    const rig::WindowFrame frame = rig::frameOf(desktop().x(), *panel());
    click(rig::ScreenPoint{frame.x + frame.width - 2 * (17 + 19), frame.y + 2 * 41});
    EXPECT_TRUE(eventually([] { return isOn("全部功能"); }, true));
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
