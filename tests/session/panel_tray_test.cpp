#include "tests/session/panel_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/windows.hpp"

#include <algorithm>

namespace orvel::test {
namespace {

using rig::OrvelProgram;
using testing::Contains;
using testing::Not;

/// The way from the icon in a tray to the panel and back.
class PanelTrayTest : public PanelSessionTest {
protected:
    void SetUp() override {
        PanelSessionTest::SetUp();
        startTray();
    }
    void TearDown() override {
        tray_.reset();
        PanelSessionTest::TearDown();
    }
    void startTray() {
        tray_.reset();
        tray_.emplace(environment(), desktop().x());
    }
    /// The darkest or, by how much, the most coloured point: lines are thinner than points.
    static int darkest(const rig::Picture& picture) {
        const auto light = [](const rig::Colour& c) { return (c.red + c.green + c.blue) / 3; };
        return light(*std::ranges::min_element(picture.pixels, {}, light));
    }
    static int mostBeyond(const rig::Picture& picture, std::uint8_t rig::Colour::*part,
                          std::uint8_t rig::Colour::*other) {
        const auto beyond = [&](const rig::Colour& c) { return c.*part - c.*other; };
        return beyond(*std::ranges::max_element(picture.pixels, {}, beyond));
    }
    rig::WindowFrame icon() { return tray_->waitForIcon(); }
    rig::Picture iconPicture() {
        const rig::WindowFrame frame = icon();
        return rig::pictureOf(desktop().x(), desktop().x().root(), frame.x, frame.y, frame.width,
                              frame.height);
    }
    /// As soon as it is drawn.
    rig::Picture firstIconPicture() {
        EXPECT_TRUE(eventually([&] { return iconPicture().colourCount(); }, testing::Gt(3U)));
        return iconPicture();
    }
    void openByClick() {
        firstIconPicture();
        click(icon());
        waitForPanel();
    }

    std::optional<rig::Tray> tray_;
};

TEST_F(PanelTrayTest, AClickOnTheIconOpensThePanelAndAClickElsewhereClosesIt) {
    OrvelProgram orvel = start();
    openByClick();
    const rig::WindowFrame frame = rig::frameOf(desktop().x(), *panel());
    EXPECT_EQ(frame.width, 350);
    EXPECT_EQ(frame.height, 550);
    EXPECT_LE(frame.y + frame.height, icon().y);
    click(kElsewhere);
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, APressOnTheIconClosesTheOpenPanelAndItStaysClosed) {
    OrvelProgram orvel = start();
    openByClick();
    moveTo(icon());
    mouse().press(rig::Button::left);
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    mouse().release(rig::Button::left);
    // Whatever the release caused is done when a request that came later is answered.
    EXPECT_TRUE(run({"panel"}).success());
    waitForPanel();
    click(icon());
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, TheFirstClickOnAnIconThatHasJustDockedOpensThePanel) {
    for (int time = 0; time < 3; ++time) {
        OrvelProgram orvel = start();
        // What is pressed where no icon shows yet need not reach it.
        firstIconPicture();
        click(icon());
        EXPECT_TRUE(eventually([] { return isPanelOpen(); }, true));
        EXPECT_TRUE(orvel.stop().success());
        // A tray closes the gap that an icon leaves when it likes.
        startTray();
    }
}

TEST_F(PanelTrayTest, ASwitchTurnedByMouseChangesTheNextKey) {
    OrvelProgram orvel = start();
    openByClick();
    click(switchOf("正向删除功能").frame);
    EXPECT_TRUE(eventually([] { return isOn("正向删除功能"); }, true));
    rig::KeyProbe probe = startProbe();
    keyboard().chord({"Shift_L", "BackSpace"});
    EXPECT_TRUE(eventually([&] { return spelled(probe.keys()); },
                           testing::AllOf(Contains("+Delete"), Not(Contains("+BackSpace")))));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, WhatTheCommandLineSetsShowsInTheOpenPanel) {
    OrvelProgram orvel = start();
    openByClick();
    EXPECT_FALSE(isOn("窗口磁吸管理"));
    EXPECT_TRUE(run({"prefs", "set", "card_snap", "true"}).success());
    EXPECT_TRUE(eventually([] { return isOn("窗口磁吸管理"); }, true));
    EXPECT_TRUE(isPanelOpen());
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, PausedByTheChordIconAndPanelSaySoAndOneClickResumes) {
    OrvelProgram orvel = start({{"card_eject", true}});
    const rig::Picture working = firstIconPicture();
    keyboard().chord({"BackSpace", "Escape", "Return"});
    EXPECT_TRUE(eventually([&] { return iconPicture() == working; }, false));
    openByClick();
    clickOn("push button", "已暂停，点按恢复");
    EXPECT_TRUE(eventually([&] { return iconPicture() == working; }, true));
    EXPECT_TRUE(eventually(
        [] { return seen().find("push button", "已暂停，点按恢复").has_value(); }, false));
    rig::KeyProbe probe = startProbe();
    keyboard().chord({"Shift_L", "BackSpace"});
    EXPECT_TRUE(eventually([&] { return spelled(probe.keys()); }, Contains("+Delete")));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, ARightClickOpensTheMenuWhoseLastChoiceEndsTheProgram) {
    OrvelProgram orvel = start();
    firstIconPicture();
    click(icon(), rig::Button::right);
    const auto chooseLast = [&] {
        keyboard().tap("Up");
        keyboard().tap("Return");
        return orvel.process().waitForExit(std::chrono::milliseconds(300));
    };
    EXPECT_TRUE(
        eventually(chooseLast, testing::Optional(rig::ExitStatus{.code = 0, .signal = {}})));
}

TEST_F(PanelTrayTest, TheIconShowsOnALightTrayThatDoesNotTellItsColours) {
    OrvelProgram orvel = start();
    const rig::Picture picture = firstIconPicture();
    EXPECT_GT(picture.at(0, 0).green, 200) << "the tray is light";
    EXPECT_LT(darkest(picture), 120);
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, TheIconFollowsTheColoursThatTheTrayTells) {
    using rig::Colour;
    OrvelProgram orvel = start();
    const rig::Picture untold = firstIconPicture();
    tray_->tellColour(Colour{200, 0, 0});
    EXPECT_TRUE(eventually([&] { return mostBeyond(iconPicture(), &Colour::red, &Colour::blue); },
                           testing::Gt(80)));
    tray_->tellColour(Colour{0, 0, 200});
    EXPECT_TRUE(eventually([&] { return mostBeyond(iconPicture(), &Colour::blue, &Colour::red); },
                           testing::Gt(80)));
    tray_->tellColour(std::nullopt);
    EXPECT_TRUE(eventually([&] { return iconPicture() == untold; }, true));
    // A tray that comes later tells as well.
    startTray();
    tray_->tellColour(Colour{0, 200, 0});
    EXPECT_TRUE(eventually([&] { return mostBeyond(iconPicture(), &Colour::green, &Colour::red); },
                           testing::Gt(80)));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelTrayTest, TheShortcutThatTheOpenMenuShowsEndsTheProgram) {
    OrvelProgram orvel = start();
    firstIconPicture();
    click(icon(), rig::Button::right);
    const auto pressShortcut = [&] {
        keyboard().chord({"Control_L", "q"});
        return orvel.process().waitForExit(std::chrono::milliseconds(300));
    };
    EXPECT_TRUE(
        eventually(pressShortcut, testing::Optional(rig::ExitStatus{.code = 0, .signal = {}})));
}

TEST_F(PanelTrayTest, OnlyTheFirstStartSaysWhereTheIconIs) {
    for (const bool isFirst : {true, false}) {
        rig::OrvelProgram orvel(frontDoor(), environment());
        // Said right after the line that ends the start.
        EXPECT_TRUE(orvel.process().out().waitForText("Finder").has_value());
        EXPECT_EQ(orvel.process().out().text().find("icon is in the tray") != std::string::npos,
                  isFirst);
        EXPECT_TRUE(orvel.stop().success());
    }
}

/// A desktop that shows no icons.
class PanelWithoutTrayTest : public PanelSessionTest {};

TEST_F(PanelWithoutTrayTest, TheCommandLineOpensThePanel) {
    OrvelProgram orvel = start();
    EXPECT_TRUE(run({"panel"}).success());
    waitForPanel();
    keyboard().tap("Escape");
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(PanelWithoutTrayTest, StartingTheProgramAgainOpensThePanelOfTheFirst) {
    OrvelProgram orvel = start();
    EXPECT_FALSE(run({"run"}).success());
    waitForPanel();
    EXPECT_TRUE(orvel.process().running());
    click(kElsewhere);
    EXPECT_TRUE(eventually([] { return isPanelOpen(); }, false));
    EXPECT_TRUE(orvel.stop().success());
}

}  // namespace
}  // namespace orvel::test
