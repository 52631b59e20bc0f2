#pragma once

#include "platform/input_state.hpp"
#include "tests/support/event_builders.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What everyone who knows the hardware's state does. `Harness`:
///     InputState& state();
///     void send(const Event& event);          the hardware sends it, and everything came to rest
///     void movePointer(ScreenPoint point);
template <typename Harness>
class InputStateContract : public ::testing::Test {
protected:
    Harness harness;
    InputState& state = harness.state();
};

TYPED_TEST_SUITE_P(InputStateContract);

TYPED_TEST_P(InputStateContract, KnowsWhichKeysAreHeld) {
    EXPECT_FALSE(this->state.isKeyDown(key::a));
    this->harness.send(test::keyDown(key::a));
    EXPECT_TRUE(this->state.isKeyDown(key::a));
    EXPECT_FALSE(this->state.isKeyDown(key::b));
    this->harness.send(test::keyUp(key::a));
    EXPECT_FALSE(this->state.isKeyDown(key::a));
}

TYPED_TEST_P(InputStateContract, KnowsWhichModifiersAreHeld) {
    this->harness.send(test::flagsChanged(key::leftShift, flag::shift));
    EXPECT_TRUE(holds(this->state.hidFlags(), flag::shift));
    EXPECT_TRUE(this->state.isKeyDown(key::leftShift));
    this->harness.send(test::flagsChanged(key::leftShift, flag::none));
    EXPECT_FALSE(holds(this->state.hidFlags(), flag::shift));
    EXPECT_FALSE(this->state.isKeyDown(key::leftShift));
}

TYPED_TEST_P(InputStateContract, KnowsWhereThePointerIs) {
    this->harness.movePointer({123, 45});
    EXPECT_EQ(this->state.pointerLocation(), (ScreenPoint{123, 45}));
}

REGISTER_TYPED_TEST_SUITE_P(InputStateContract, KnowsWhichKeysAreHeld, KnowsWhichModifiersAreHeld,
                            KnowsWhereThePointerIs);

}  // namespace orvel::contract
