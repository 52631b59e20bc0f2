#include "tests/session/service_session.hpp"
#include "tools/rig/windows.hpp"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace orvel::test {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::Lt;

/// Screens that come and go, and what panels keep free of them, as the services see it.
class X11ScreensTest : public SessionTest {
protected:
    X11ScreensTest() : services_(desktop()) {}
    void TearDown() override {
        server().unplugSecondMonitor();
        SessionTest::TearDown();
    }

    static rig::XorgServer& server() { return desktop().server(); }
    std::vector<ScreenRect> frames() {
        std::vector<ScreenRect> frames;
        for (const Screen& screen : services_->screens().screens()) frames.push_back(screen.frame);
        return frames;
    }
    double freeHeight() { return services_->screens().screens().front().visibleFrame.height; }

    OpenServices services_;
    static constexpr ScreenRect kFirst{0, 0, 1920, 1080};
};

TEST_F(X11ScreensTest, AScreenIsThereOncePluggedAndGoneOnceUnplugged) {
    EXPECT_THAT(frames(), ElementsAre(kFirst));
    server().plugSecondMonitor({1280, 800}, rig::MonitorSide::rightOfFirst);
    EXPECT_TRUE(eventually(
        services_, [this] { return frames(); },
        // Both have their upper edges in line.
        ElementsAre(kFirst, ScreenRect{1920, 280, 1280, 800})));
    server().unplugSecondMonitor();
    EXPECT_TRUE(eventually(
        services_, [this] { return frames(); }, ElementsAre(kFirst)));
}

TEST_F(X11ScreensTest, AScreenPluggedWhileAnotherProgramHeldTheServerIsThereOnceItLetsGo) {
    server().plugSecondMonitor({1280, 800}, rig::MonitorSide::rightOfFirst);
    rig::waitForWindowManager(desktop().x());
    {
        const rig::ServerGrab grab(desktop().x());
        services_.settle();
    }
    EXPECT_TRUE(eventually(
        services_, [this] { return frames(); },
        ElementsAre(kFirst, ScreenRect{1920, 280, 1280, 800})));
}

TEST_F(X11ScreensTest, AScreenThatChangesItsSizeIsFollowed) {
    server().resizeMonitor({1280, 800});
    EXPECT_TRUE(eventually(
        services_, [this] { return frames(); }, ElementsAre(ScreenRect{0, 0, 1280, 800})));
    EXPECT_TRUE(eventually(
        services_, [this] { return freeHeight(); }, testing::Le(800)));
    server().resizeMonitor({1920, 1080});
    EXPECT_TRUE(eventually(
        services_, [this] { return frames(); }, ElementsAre(kFirst)));
}

TEST_F(X11ScreensTest, AScreenToTheLeftHasNegativeCoordinates) {
    server().plugSecondMonitor({1280, 800}, rig::MonitorSide::leftOfFirst);
    EXPECT_TRUE(eventually(
        services_, [this] { return frames(); },
        ElementsAre(kFirst, ScreenRect{-1280, 280, 1280, 800})));
}

TEST_F(X11ScreensTest, WhatAPanelReservesIsFreeAgainWhenItEnds) {
    const double whole = freeHeight();
    {
        const rig::ChildProcess panel({.arguments = {"trayer", "--edge", "bottom", "--height", "40",
                                                     "--SetPartialStrut", "true"},
                                       .environment = desktop().environment()});
        EXPECT_TRUE(eventually(
            services_, [this] { return freeHeight(); }, Lt(whole)));
    }
    EXPECT_TRUE(eventually(
        services_, [this] { return freeHeight(); }, Eq(whole)));
}

}  // namespace
}  // namespace orvel::test
