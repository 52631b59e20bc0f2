#pragma once

#include "platform/input_sources.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace orvel::contract {

/// What every set of input sources does. `Harness`:
///     InputSources& sources();   two keyboard sources, of which the first types English and is
///                                current, and the second does not type ASCII
///     void selectFromOutside(const std::string& id);   somebody else selects that source
///     bool settlesOn(const std::string& id);   whether it comes to be current and stays so when
///                                              everything that is under way has been told
template <typename Harness>
class InputSourcesContract : public ::testing::Test {
protected:
    Harness harness;
    InputSources& sources = harness.sources();

    [[nodiscard]] std::string idAt(std::size_t place) {
        const auto all = sources.selectable();
        return place < all.size() ? all[place].id : "there is none";
    }
    [[nodiscard]] std::string current() {
        const auto source = sources.current();
        return source ? source->id : "none";
    }
};

TYPED_TEST_SUITE_P(InputSourcesContract);

TYPED_TEST_P(InputSourcesContract, ListsKeyboardSourcesAndWhetherTheyTypeAscii) {
    const auto all = this->sources.selectable();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_NE(all[0].id, all[1].id);
    EXPECT_TRUE(all[0].isKeyboard);
    EXPECT_TRUE(all[1].isKeyboard);
    EXPECT_EQ(all[0].isAsciiCapable, true);
    EXPECT_EQ(all[1].isAsciiCapable, false);
}

TYPED_TEST_P(InputSourcesContract, TheCurrentSourceIsOneOfThem) {
    const auto current = this->sources.current();
    ASSERT_TRUE(current);
    EXPECT_EQ(current->id, this->idAt(0));
    EXPECT_TRUE(current->isKeyboard);
    EXPECT_EQ(current->isAsciiCapable, true);
}

TYPED_TEST_P(InputSourcesContract, ASelectedSourceIsCurrentAtOnceAndStaysSo) {
    for (const std::size_t place : {1U, 0U, 1U}) {
        const std::string wanted = this->idAt(place);
        this->sources.select(wanted);
        EXPECT_EQ(this->current(), wanted);
        EXPECT_TRUE(this->harness.settlesOn(wanted));
    }
    EXPECT_EQ(this->sources.current()->isAsciiCapable, false);
}

TYPED_TEST_P(InputSourcesContract, TheLastOfManySelectionsStays) {
    for (int turn = 0; turn < 5; ++turn) {
        this->sources.select(this->idAt(1));
        this->sources.select(this->idAt(0));
    }
    this->sources.select(this->idAt(1));
    EXPECT_TRUE(this->harness.settlesOn(this->idAt(1)));
}

TYPED_TEST_P(InputSourcesContract, SeesWhatSomebodyElseSelects) {
    this->harness.selectFromOutside(this->idAt(1));
    EXPECT_TRUE(this->harness.settlesOn(this->idAt(1)));
    this->harness.selectFromOutside(this->idAt(0));
    EXPECT_TRUE(this->harness.settlesOn(this->idAt(0)));
}

TYPED_TEST_P(InputSourcesContract, AnUnknownSourceChangesNothing) {
    this->sources.select("nothing of that name");
    EXPECT_EQ(this->current(), this->idAt(0));
    EXPECT_TRUE(this->harness.settlesOn(this->idAt(0)));
}

REGISTER_TYPED_TEST_SUITE_P(InputSourcesContract, ListsKeyboardSourcesAndWhetherTheyTypeAscii,
                            TheCurrentSourceIsOneOfThem, ASelectedSourceIsCurrentAtOnceAndStaysSo,
                            TheLastOfManySelectionsStays, SeesWhatSomebodyElseSelects,
                            AnUnknownSourceChangesNothing);

}  // namespace orvel::contract
