#include "platform/accessibility_windows.hpp"
#include "platform/base/bitmap.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_window_capture.hpp"
#include "platform/screens.hpp"
#include "platform/text_caret.hpp"
#include "platform/window_images.hpp"
#include "platform/window_list.hpp"
#include "tests/macos/run/mac_test.hpp"

#include <CoreGraphics/CoreGraphics.h>

#include <chrono>

namespace orvel::macos {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kPid = 42;

class MacAccessibilityWindowsTest : public MacTest {
protected:
    MacAccessibilityWindowsTest() {
        mac().applications[kPid].windows = {
            {.title = "Notes", .x = 10, .y = 20, .width = 300, .height = 200}};
        mac().applications[kPid].focusedWindow = 0;
    }
    void TearDown() override {
        windows.reset();
        MacTest::TearDown();
    }

    std::unique_ptr<AccessibilityWindows> windows = makeAccessibilityWindows();
};

TEST_F(MacAccessibilityWindowsTest, SwitchesTheEnhancedModeOffForAMoveAndPutsItBack) {
    mac().applications[kPid].enhancedMode = true;
    EXPECT_TRUE(windows->setPosition(*windows->focusedWindow(kPid), {1, 2}));
    EXPECT_EQ(mac().applications[kPid].windows[0].x, 1);
    EXPECT_THAT(mac().applications[kPid].enhancedModeWrites, ElementsAre(false, true));
}

TEST_F(MacAccessibilityWindowsTest, SwitchesTheEnhancedModeOnceForASeriesOfMoves) {
    mac().applications[kPid].enhancedMode = true;
    windows->setBudget(1000ms);
    const AxWindow window = *windows->focusedWindow(kPid);
    windows->setPosition(window, {0, 0});
    windows->setSize(window, {100, 100});
    windows->setBudget(std::nullopt);
    EXPECT_THAT(mac().applications[kPid].enhancedModeWrites, ElementsAre(false, true));
    EXPECT_EQ(mac().applications[kPid].windows[0].width, 100);
}

TEST_F(MacAccessibilityWindowsTest, LeavesAnEnhancedModeThatIsOffAlone) {
    mac().applications[kPid].enhancedMode = false;
    windows->setSize(*windows->focusedWindow(kPid), {100, 100});
    EXPECT_THAT(mac().applications[kPid].enhancedModeWrites, IsEmpty());
}

TEST_F(MacAccessibilityWindowsTest, AHungApplicationHoldsNobodyUpBeyondTheBudget) {
    const AxWindow window = *windows->focusedWindow(kPid);
    mac().applications[kPid].isHung = true;
    windows->setBudget(100ms);
    const auto begin = Clock::now();
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(windows->setPosition(window, {1, 2}));
        EXPECT_FALSE(windows->focusedWindow(kPid));
    }
    EXPECT_LT(Clock::now() - begin, 400ms);
}

TEST_F(MacAccessibilityWindowsTest, WithoutABudgetACallStillHasALimit) {
    mac().applications[kPid].isHung = true;
    const auto begin = Clock::now();
    EXPECT_FALSE(windows->windows(kPid));
    EXPECT_LT(Clock::now() - begin, 2s);
}

class MacTextCaretTest : public MacTest {
protected:
    std::unique_ptr<TextCaret> caret = makeTextCaret();
};

TEST_F(MacTextCaretTest, GivesTheRectangleCountedFromTheTopLeft) {
    mac().caret = {.x = 100, .y = 50, .width = 1, .height = 18};
    EXPECT_EQ(caret->caretRect(), (AxRect{100, 50, 1, 18}));
}

TEST_F(MacTextCaretTest, IsAbsentWithoutAFocusedTextAndForEmptyAnswers) {
    EXPECT_EQ(caret->caretRect(), std::nullopt);
    mac().caret = fake::Caret{};
    EXPECT_EQ(caret->caretRect(), std::nullopt);
}

class MacWindowImagesTest : public MacTest {
protected:
    MacWindowImagesTest() {
        mac().serverWindows = {
            {.number = 7, .pid = kPid, .width = 400, .height = 300, .captureWidth = 400}};
    }
    std::unique_ptr<WindowImages> images = makeWindowImages();
};

TEST_F(MacWindowImagesTest, CapturesAWindowNoLargerThanItIsEverShown) {
    const auto picture = images->capture(7);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixelWidth, 640);
    EXPECT_EQ(picture->pixelHeight, 480);
    const auto& bitmap = *static_cast<const Bitmap*>(picture->native.get());
    EXPECT_EQ(bitmap.width, 640);
    // The pixels came from a picture at the screen's double scale.
    EXPECT_EQ(bitmap.at(0, 0), 800U);
}

TEST_F(MacWindowImagesTest, HasNoPictureOfWhatIsGoneOrCannotBeCaptured) {
    EXPECT_FALSE(images->capture(8));
    mac().serverWindows[0].captureWidth = 0;
    EXPECT_FALSE(images->capture(7));
}

TEST_F(MacWindowImagesTest, DoesNotTryWithoutPermission) {
    mac().mayCapture = false;
    EXPECT_FALSE(images->hasPermission());
    EXPECT_FALSE(images->capture(7));
    EXPECT_EQ(mac().capturePrompts, 0);
    images->requestPermission();
    EXPECT_EQ(mac().capturePrompts, 1);
}

TEST_F(MacWindowImagesTest, GivesUpOnASystemThatDoesNotAnswer) {
    mac().capturesNeverAnswer = true;
    const auto begin = Clock::now();
    EXPECT_FALSE(images->capture(7));
    EXPECT_LT(Clock::now() - begin, 2s);
}

TEST_F(MacWindowImagesTest, AsksTheWindowServerForTheWindowAloneOnOlderSystems) {
    const CfRef<CGImageRef> image = captureByWindowServer(7);
    ASSERT_TRUE(image);
    EXPECT_EQ(CGImageGetWidth(image.get()), 400U);
}

using MacWindowListTest = MacTest;

TEST_F(MacWindowListTest, TellsEverythingAboutAWindow) {
    mac().serverWindows = {{.number = 4000000000U,
                            .pid = kPid,
                            .layer = 101,
                            .x = -5,
                            .y = 30,
                            .width = 60,
                            .height = 20}};
    const auto windows = makeWindowList()->windows(WindowListScope::all);
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows[0].number, 4000000000U);
    EXPECT_EQ(windows[0].pid, kPid);
    EXPECT_EQ(windows[0].layer, 101);
    EXPECT_EQ(windows[0].name, "");
    EXPECT_EQ(windows[0].bounds, (AxRect{-5, 30, 60, 20}));
}

using MacScreensTest = MacTest;

TEST_F(MacScreensTest, FollowsScreensThatComeAndGo) {
    const auto screens = makeScreens();
    ASSERT_EQ(screens->screens().size(), 1U);
    mac().screens.push_back({.x = -1920, .y = 200, .width = 1920, .height = 1080});
    ASSERT_EQ(screens->screens().size(), 2U);
    EXPECT_EQ(screens->screens()[1].frame, (ScreenRect{-1920, 200, 1920, 1080}));
    EXPECT_EQ(screens->screens()[0].visibleFrame, (ScreenRect{0, 70, 1440, 805}));
    mac().screens.clear();
    EXPECT_TRUE(screens->screens().empty());
}

TEST_F(MacScreensTest, TheScreenWithTheKeyboardComesFirst) {
    const auto screens = makeScreens();
    mac().screens.push_back({.x = -1920, .y = 200, .width = 1920, .height = 1080});
    mac().mainScreen = 1;
    ASSERT_EQ(screens->screens().size(), 2U);
    EXPECT_EQ(screens->screens()[0].frame, (ScreenRect{-1920, 200, 1920, 1080}));
    EXPECT_EQ(screens->screens()[1].frame.minX(), 0);
}

}  // namespace
}  // namespace orvel::macos
