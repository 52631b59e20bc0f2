#pragma once

#include "platform/status_bar.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace orvel::contract {

/// What every status bar does. `Harness`:
///     StatusBar& bar();
///     ScreenRect screen();                       the screen that the bar is on
///     void waitForItem();                        returns when the item shows
///     void click(StatusItemButton button);       a person clicks the item
///     bool runUntil(std::function<bool()> isDone);
template <typename Harness>
class StatusBarContract : public ::testing::Test {
protected:
    Harness harness;
    StatusBar& bar = harness.bar();
    std::vector<StatusItemClick> clicks;

    void createItem() {
        bar.createItem({.image = "MenuBarIcon",
                        .fallbackSymbol = "keyboard.macwindow",
                        .fallbackDescription = "Orvel"},
                       [this](const StatusItemClick& click) { clicks.push_back(click); });
        harness.waitForItem();
    }
    /// Whether that click makes it so many.
    [[nodiscard]] bool isTold(StatusItemButton button, std::size_t count) {
        harness.click(button);
        return harness.runUntil([&] { return clicks.size() == count; });
    }
};

TYPED_TEST_SUITE_P(StatusBarContract);

TYPED_TEST_P(StatusBarContract, SaysWhichButtonClickedTheItem) {
    this->createItem();
    EXPECT_TRUE(this->clicks.empty());
    ASSERT_TRUE(this->isTold(StatusItemButton::left, 1));
    ASSERT_TRUE(this->isTold(StatusItemButton::right, 2));
    EXPECT_EQ(this->clicks[0].button, StatusItemButton::left);
    EXPECT_EQ(this->clicks[0].flags, flag::none);
    EXPECT_EQ(this->clicks[1].button, StatusItemButton::right);
}

TYPED_TEST_P(StatusBarContract, ShowsItsButtonOnTheScreen) {
    this->createItem();
    const auto frame = this->bar.buttonFrame();
    ASSERT_TRUE(frame.has_value());
    const ScreenRect screen = this->harness.screen();
    EXPECT_GE(frame->minX(), screen.minX());
    EXPECT_GE(frame->minY(), screen.minY());
    EXPECT_LE(frame->maxX(), screen.maxX());
    EXPECT_LE(frame->maxY(), screen.maxY());
}

TYPED_TEST_P(StatusBarContract, TakesClicksWhilePaused) {
    this->bar.showPaused(true);
    this->createItem();
    this->bar.showPaused(true);
    EXPECT_TRUE(this->isTold(StatusItemButton::left, 1));
}

REGISTER_TYPED_TEST_SUITE_P(StatusBarContract, SaysWhichButtonClickedTheItem,
                            ShowsItsButtonOnTheScreen, TakesClicksWhilePaused);

}  // namespace orvel::contract
