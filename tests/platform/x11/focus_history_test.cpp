#include "platform/x11/focus_history.hpp"

#include <gtest/gtest.h>

namespace orvel::x11 {
namespace {

const AccessibleId kName{":1.7", "/name"};
const AccessibleId kSecret{":1.7", "/secret"};
const AccessibleId kNothing{":1.7", ""};
const AccessibleId kElsewhere{":1.9", "/secret"};
const std::vector<std::string> kForm{":1.7"};

class FocusHistoryTest : public ::testing::Test {
protected:
    void gain(const AccessibleId& object, FocusKind kind) {
        history.gained(object);
        history.learned(object, kind);
    }

    FocusHistory history;
};

TEST_F(FocusHistoryTest, WhatWasTypedBeforeAnythingWasToldIsNotOpen) {
    const auto typed = history.now();
    gain(kName, FocusKind::ordinary);
    EXPECT_FALSE(history.isOpen(kForm, typed));
    EXPECT_TRUE(history.isOpen(kForm, history.now()));
}

TEST_F(FocusHistoryTest, WhatWasTypedIntoAnOrdinaryFieldStaysOpenWhileTheFocusIsOnItsWay) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    history.lost(kName);
    gain(kName, FocusKind::ordinary);
    EXPECT_TRUE(history.isOpen(kForm, typed));
}

TEST_F(FocusHistoryTest, APasswordFieldThatGotTheFocusSinceMakesItSecret) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    history.lost(kName);
    gain(kSecret, FocusKind::password);
    history.lost(kSecret);
    gain(kName, FocusKind::ordinary);
    EXPECT_FALSE(history.isOpen(kForm, typed));
    EXPECT_TRUE(history.isOpen(kForm, history.now()));
}

TEST_F(FocusHistoryTest, APasswordFieldThatHadTheFocusThenMakesItSecret) {
    gain(kSecret, FocusKind::password);
    const auto typed = history.now();
    gain(kName, FocusKind::ordinary);
    EXPECT_FALSE(history.isOpen(kForm, typed));
}

TEST_F(FocusHistoryTest, AFieldThatDidNotSayWhatItIsIsNotOpen) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    history.gained(kSecret);
    EXPECT_FALSE(history.isOpen(kForm, typed));
    history.learned(kSecret, FocusKind::untold);
    EXPECT_FALSE(history.isOpen(kForm, typed));
}

TEST_F(FocusHistoryTest, NothingIsOpenWhileTheFocusIsOnlySaidToBeNowhere) {
    gain(kName, FocusKind::ordinary);
    history.lost(kName);
    EXPECT_FALSE(history.isOpen(kForm, history.now()));
    history.found(kNothing, FocusKind::surely);
    EXPECT_TRUE(history.isOpen(kForm, history.now()));
}

TEST_F(FocusHistoryTest, AFieldThatBecameAPasswordFieldMakesWhatWasTypedBeforeTheQuestionSecret) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    history.found(kName, FocusKind::password);
    EXPECT_FALSE(history.isOpen(kForm, typed));
    history.found(kName, FocusKind::ordinary);
    EXPECT_TRUE(history.isOpen(kForm, history.now()));
}

TEST_F(FocusHistoryTest, APasswordFieldOfAnotherApplicationThatGotTheFocusSinceMakesItSecret) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    gain(kElsewhere, FocusKind::password);
    EXPECT_FALSE(history.isOpen(kForm, typed));
    EXPECT_EQ(history.passwordHolders(), std::vector{kElsewhere});
    history.lost(kElsewhere);
    EXPECT_TRUE(history.passwordHolders().empty());
    EXPECT_TRUE(history.isOpen(kForm, history.now()));
}

TEST_F(FocusHistoryTest, ForgettingMakesWhatWasTypedBeforeSecret) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    history.forget();
    EXPECT_FALSE(history.isOpen(kForm, typed));
    EXPECT_FALSE(history.isOpen(kForm, history.now()));
}

TEST_F(FocusHistoryTest, RemembersSoMuchAndNoMore) {
    gain(kName, FocusKind::ordinary);
    const auto typed = history.now();
    for (int i = 0; i < 10'000; ++i) gain(i % 2 == 0 ? kSecret : kName, FocusKind::ordinary);
    EXPECT_FALSE(history.isOpen(kForm, typed));
    EXPECT_TRUE(history.isOpen(kForm, history.now()));
}

}  // namespace
}  // namespace orvel::x11
