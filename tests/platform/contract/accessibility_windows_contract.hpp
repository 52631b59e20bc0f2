#pragma once

#include "platform/accessibility_windows.hpp"

#include <gtest/gtest.h>

#include <string>

namespace orvel::contract {

/// What everyone who reaches other applications' windows does. `Harness`:
///     AccessibilityWindows& windows();
///     ProcessId open(std::string title, AxRect frame);   an application opens a window
///     void focus(ProcessId pid);                         its window gets the keyboard
///     void close(ProcessId pid);                         the application ends
///     void settle();
template <typename Harness>
class AccessibilityWindowsContract : public ::testing::Test {
protected:
    static constexpr AxRect kFrame{100, 120, 320, 240};

    Harness harness;
    AccessibilityWindows& windows = harness.windows();
    ProcessId pid = harness.open("Notes", kFrame);

    [[nodiscard]] AxWindow onlyWindow() {
        const auto found = windows.windows(pid);
        if (!found || found->size() != 1) return {};
        return found->front();
    }
    [[nodiscard]] AxWindowAttributes settledAttributes(const AxWindow& window) {
        harness.settle();
        return windows.attributes(window);
    }
};

TYPED_TEST_SUITE_P(AccessibilityWindowsContract);

TYPED_TEST_P(AccessibilityWindowsContract, FindsTheWindowsOfAnApplication) {
    const AxWindow window = this->onlyWindow();
    ASSERT_NE(window.element, nullptr);
    const AxWindowAttributes attributes = this->windows.attributes(window);
    EXPECT_EQ(attributes.title, "Notes");
    EXPECT_EQ(attributes.position, this->kFrame.origin());
    EXPECT_EQ(attributes.size, this->kFrame.size());
    EXPECT_EQ(attributes.isMinimized, false);
    ASSERT_TRUE(attributes.role.has_value());
    EXPECT_NE(attributes.role->find("Window"), std::string::npos);
}

TYPED_TEST_P(AccessibilityWindowsContract, FindsTheFocusedWindow) {
    this->harness.focus(this->pid);
    const auto focused = this->windows.focusedWindow(this->pid);
    ASSERT_TRUE(focused.has_value());
    EXPECT_EQ(this->windows.attributes(*focused).title, "Notes");
}

TYPED_TEST_P(AccessibilityWindowsContract, MovesAndResizesAWindow) {
    const AxWindow window = this->onlyWindow();
    ASSERT_NE(window.element, nullptr);
    EXPECT_TRUE(this->windows.setPosition(window, {40, 60}));
    EXPECT_TRUE(this->windows.setSize(window, {400, 300}));
    const AxWindowAttributes attributes = this->settledAttributes(window);
    EXPECT_EQ(attributes.position, (AxPoint{40, 60}));
    EXPECT_EQ(attributes.size, (Size{400, 300}));
}

TYPED_TEST_P(AccessibilityWindowsContract, MinimisesAndBringsBack) {
    const AxWindow window = this->onlyWindow();
    ASSERT_NE(window.element, nullptr);
    EXPECT_TRUE(this->windows.setMinimized(window, true));
    EXPECT_EQ(this->settledAttributes(window).isMinimized, true);
    EXPECT_TRUE(this->windows.setMinimized(window, false));
    EXPECT_EQ(this->settledAttributes(window).isMinimized, false);
}

TYPED_TEST_P(AccessibilityWindowsContract, FocusesAWindow) {
    this->harness.open("Other", {10, 10, 200, 200});
    const AxWindow window = this->onlyWindow();
    ASSERT_NE(window.element, nullptr);
    EXPECT_TRUE(this->windows.raise(window));
    EXPECT_TRUE(this->windows.setMain(window, true));
    EXPECT_TRUE(this->windows.setFocused(window, true));
    this->harness.settle();
    EXPECT_TRUE(this->windows.focusedWindow(this->pid).has_value());
}

TYPED_TEST_P(AccessibilityWindowsContract, FailsOnAWindowThatIsGone) {
    const AxWindow window = this->onlyWindow();
    ASSERT_NE(window.element, nullptr);
    this->harness.close(this->pid);
    EXPECT_EQ(this->windows.attributes(window).title, std::nullopt);
    EXPECT_FALSE(this->windows.setPosition(window, {0, 0}));
    EXPECT_FALSE(this->windows.setSize(window, {100, 100}));
    EXPECT_FALSE(this->windows.setMinimized(window, true));
    EXPECT_FALSE(this->windows.focusedWindow(this->pid).has_value());
}

REGISTER_TYPED_TEST_SUITE_P(AccessibilityWindowsContract, FindsTheWindowsOfAnApplication,
                            FindsTheFocusedWindow, MovesAndResizesAWindow, MinimisesAndBringsBack,
                            FocusesAWindow, FailsOnAWindowThatIsGone);

}  // namespace orvel::contract
