#pragma once

#include "platform/text_caret.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What the caret of every desktop does. `Harness`:
///     TextCaret& caret();
///     AxRect focusText();                      a text field has the keyboard: its window's place
///     AxRect moveText(double dx, double dy);   moves that window: its new place
///     void focusNoText();                      what has the keyboard holds no text
template <typename Harness>
class TextCaretContract : public ::testing::Test {
protected:
    /// The highest line that an ordinary text has.
    static constexpr double kHighLine = 60;

    Harness harness;
};

TYPED_TEST_SUITE_P(TextCaretContract);

TYPED_TEST_P(TextCaretContract, LiesInTheTextThatHasTheKeyboardAndIsAsHighAsALine) {
    const AxRect window = this->harness.focusText();
    const auto caret = this->harness.caret().caretRect();
    ASSERT_TRUE(caret.has_value());
    EXPECT_TRUE(window.contains(caret->origin())) << caret->x << ',' << caret->y;
    EXPECT_LE(caret->maxY(), window.maxY());
    EXPECT_GT(caret->height, 0);
    EXPECT_LE(caret->height, this->kHighLine);
}

TYPED_TEST_P(TextCaretContract, GoesWithItsWindow) {
    const AxRect window = this->harness.focusText();
    const auto before = this->harness.caret().caretRect();
    const AxRect moved = this->harness.moveText(70, 40);
    const auto after = this->harness.caret().caretRect();
    ASSERT_TRUE(before.has_value());
    ASSERT_TRUE(after.has_value());
    EXPECT_EQ(after->x - before->x, moved.x - window.x);
    EXPECT_EQ(after->y - before->y, moved.y - window.y);
    EXPECT_EQ(after->size(), before->size());
}

TYPED_TEST_P(TextCaretContract, IsAbsentWhereNoTextHasTheKeyboard) {
    this->harness.focusNoText();
    EXPECT_EQ(this->harness.caret().caretRect(), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(TextCaretContract, LiesInTheTextThatHasTheKeyboardAndIsAsHighAsALine,
                            GoesWithItsWindow, IsAbsentWhereNoTextHasTheKeyboard);

}  // namespace orvel::contract
