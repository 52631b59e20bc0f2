#pragma once

#include "platform/event_tap.hpp"
#include "tests/support/event_builders.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace orvel::contract {

/// What every tap does. `Harness`:
///     EventTap& tap();
///     void send(const Event& event);   the hardware sends it, and everything came to rest
///     void switchOff();                the desktop switches the tap off
template <typename Harness>
class EventTapContract : public ::testing::Test {
protected:
    static constexpr EventMask kKeys = maskOf(EventType::keyDown) | maskOf(EventType::keyUp);

    Harness harness;
    EventTap& tap = harness.tap();
    std::vector<Event> seen;

    void tapKeys() {
        ASSERT_TRUE(tap.create({.mask = kKeys}, [this](Event& event) {
            seen.push_back(event);
            return EventVerdict::pass;
        }));
    }
    [[nodiscard]] std::vector<KeyCode> seenKeys() const {
        std::vector<KeyCode> keys;
        for (const Event& event : seen) keys.push_back(event.keyCode);
        return keys;
    }
};

TYPED_TEST_SUITE_P(EventTapContract);

TYPED_TEST_P(EventTapContract, IsNotThereBeforeItIsCreated) {
    EXPECT_FALSE(this->tap.exists());
    EXPECT_FALSE(this->tap.isEnabled());
    this->tap.enable();
    EXPECT_FALSE(this->tap.isEnabled());
}

TYPED_TEST_P(EventTapContract, SeesNothingUntilItIsEnabled) {
    this->tapKeys();
    EXPECT_TRUE(this->tap.exists());
    EXPECT_FALSE(this->tap.isEnabled());
    this->harness.send(test::keyDown(key::a));
    this->harness.send(test::keyUp(key::a));
    EXPECT_TRUE(this->seen.empty());
    this->tap.enable();
    EXPECT_TRUE(this->tap.isEnabled());
}

TYPED_TEST_P(EventTapContract, SeesPressesAndReleasesInOrder) {
    this->tapKeys();
    this->tap.enable();
    for (const KeyCode keyCode : {key::a, key::returnKey}) {
        this->harness.send(test::keyDown(keyCode));
        this->harness.send(test::keyUp(keyCode));
    }
    EXPECT_THAT(this->seenKeys(),
                ::testing::ElementsAre(key::a, key::a, key::returnKey, key::returnKey));
    ASSERT_EQ(this->seen.size(), 4U);
    EXPECT_EQ(this->seen[0].type, EventType::keyDown);
    EXPECT_EQ(this->seen[1].type, EventType::keyUp);
    EXPECT_EQ(this->seen[0].userData, 0);
}

TYPED_TEST_P(EventTapContract, SeesOnlyTheTypesItAskedFor) {
    this->tapKeys();
    this->tap.enable();
    this->harness.send(test::flagsChanged(key::leftShift, flag::shift));
    this->harness.send(test::flagsChanged(key::leftShift, flag::none));
    EXPECT_TRUE(this->seen.empty());
}

TYPED_TEST_P(EventTapContract, ComesBackAfterTheDesktopSwitchedItOff) {
    this->tapKeys();
    this->tap.enable();
    this->harness.switchOff();
    EXPECT_TRUE(this->tap.exists());
    EXPECT_FALSE(this->tap.isEnabled());
    this->tap.enable();
    EXPECT_TRUE(this->tap.isEnabled());
    this->harness.send(test::keyDown(key::a));
    this->harness.send(test::keyUp(key::a));
    EXPECT_EQ(this->seen.size(), 2U);
}

REGISTER_TYPED_TEST_SUITE_P(EventTapContract, IsNotThereBeforeItIsCreated,
                            SeesNothingUntilItIsEnabled, SeesPressesAndReleasesInOrder,
                            SeesOnlyTheTypesItAskedFor, ComesBackAfterTheDesktopSwitchedItOff);

}  // namespace orvel::contract
