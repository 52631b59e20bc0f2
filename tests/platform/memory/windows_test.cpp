#include "tests/support/effect_matchers.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel::memory {
namespace {

using namespace orvel::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr ProcessId kPid = 7;

class MemoryWindowsTest : public MemoryFixture {
protected:
    WorldWindow& addWindow(WindowNumber number, bool isFocused = false) {
        WorldWindow window;
        window.info = {number, kPid, 0, "w" + std::to_string(number), {0, 0, 400, 300}};
        window.isOnScreen = true;
        window.ax = {.role = "AXWindow",
                     .title = window.info.name,
                     .position = AxPoint{0, 0},
                     .size = Size{400, 300},
                     .isFocused = isFocused};
        desk.world.windows.push_back(window);
        return desk.world.windows.back();
    }
    AxWindow firstWindow() { return desk.accessibilityWindows.windows(kPid)->front(); }
};

TEST_F(MemoryWindowsTest, WritesAreToldAndChangeTheWorld) {
    addWindow(3);
    auto& windows = desk.accessibilityWindows;
    const AxWindow window = firstWindow();
    EXPECT_TRUE(windows.setPosition(window, {10.5, 20}));
    EXPECT_TRUE(windows.setSize(window, {200, 100}));
    EXPECT_TRUE(windows.setMinimized(window, true));
    EXPECT_TRUE(windows.raise(window));
    EXPECT_TRUE(windows.setMain(window, true));
    EXPECT_TRUE(windows.setFocused(window, true));
    EXPECT_THAT(effects(),
                ElementsAre(R"({"ax":{"window":3,"set":"AXPosition","value":[10.5,20]}})",
                            R"({"ax":{"window":3,"set":"AXSize","value":[200,100]}})",
                            R"({"ax":{"window":3,"set":"AXMinimized","value":true}})",
                            R"({"ax":{"window":3,"perform":"AXRaise"}})",
                            R"({"ax":{"window":3,"set":"AXMain","value":true}})",
                            R"({"ax":{"window":3,"set":"AXFocused","value":true}})"));
    const AxWindowAttributes now = windows.attributes(window);
    EXPECT_EQ(now.position, (AxPoint{10.5, 20}));
    EXPECT_EQ(now.size, (Size{200, 100}));
    EXPECT_EQ(now.isMinimized, true);
}

TEST_F(MemoryWindowsTest, ASizeBelowTheLeastWidthIsClamped) {
    addWindow(3).ax->minWidth = 350;
    desk.accessibilityWindows.setSize(firstWindow(), {200, 100});
    EXPECT_EQ(desk.accessibilityWindows.attributes(firstWindow()).size, (Size{350, 100}));
}

TEST_F(MemoryWindowsTest, FocusMovesWithinTheApplication) {
    addWindow(3, true);
    addWindow(4);
    auto& windows = desk.accessibilityWindows;
    windows.setFocused(windows.windows(kPid)->back(), true);
    EXPECT_EQ(windows.attributes(*windows.focusedWindow(kPid)).title, "w4");
}

TEST_F(MemoryWindowsTest, NothingCanBeReadWithoutPermission) {
    addWindow(3, true);
    desk.world.caret = AxRect{1, 2, 3, 4};
    const AxWindow window = firstWindow();
    desk.world.isTrusted = false;
    EXPECT_FALSE(desk.accessibilityWindows.windows(kPid).has_value());
    EXPECT_FALSE(desk.accessibilityWindows.focusedWindow(kPid).has_value());
    EXPECT_FALSE(desk.accessibilityWindows.attributes(window).title.has_value());
    EXPECT_FALSE(desk.textCaret.caretRect().has_value());
    EXPECT_FALSE(desk.accessibilityWindows.setMinimized(window, true));
    EXPECT_FALSE(desk.world.windows.front().ax->isMinimized);
}

TEST_F(MemoryWindowsTest, WindowsWithoutAccessibilitySideAreNotReached) {
    addWindow(3).ax.reset();
    EXPECT_THAT(*desk.accessibilityWindows.windows(kPid), IsEmpty());
    EXPECT_EQ(desk.windowList.windows(WindowListScope::all).size(), 1U);
}

TEST_F(MemoryWindowsTest, EveryPictureHasASerialNumberOfItsOwn) {
    addWindow(3).capturePixelWidth = 800;
    addWindow(4);
    EXPECT_EQ(desk.windowImages.capture(3)->serial, 1);
    EXPECT_FALSE(desk.windowImages.capture(4).has_value());
    EXPECT_FALSE(desk.windowImages.capture(5).has_value());
    desk.world.canRecordScreen = false;
    EXPECT_FALSE(desk.windowImages.capture(3).has_value());
    desk.world.canRecordScreen = true;
    const auto picture = desk.windowImages.capture(3);
    EXPECT_EQ(picture->serial, 2);
    EXPECT_EQ(picture->pixelWidth, 800);
    EXPECT_EQ(picture->pixelHeight, 600);
}

TEST_F(MemoryWindowsTest, AsksForPermissionsOnlyWhereAPromptShows) {
    EXPECT_TRUE(desk.accessibilityPermission.isTrustedOrPrompt());
    EXPECT_THAT(effects(), IsEmpty());
    desk.world.isTrusted = false;
    EXPECT_FALSE(desk.accessibilityPermission.isTrustedOrPrompt());
    desk.windowImages.requestPermission();
    EXPECT_THAT(effects(), ElementsAre(R"({"permission":"accessibilityPrompt"})",
                                       R"({"permission":"screenRecordingRequest"})"));
}

}  // namespace
}  // namespace orvel::memory
