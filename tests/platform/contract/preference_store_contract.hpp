#pragma once

#include "platform/preference_store.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace orvel::contract {

/// What every store of settings does. `Harness`:
///     PreferenceStore& store();
///     void writeFromOutside(std::string_view key, std::optional<PreferenceValue> value);
///         another process stores or removes a value, and the store had the chance to notice
template <typename Harness>
class PreferenceStoreContract : public ::testing::Test {
protected:
    Harness harness;
    PreferenceStore& store = harness.store();

    /// What is stored under the key now.
    [[nodiscard]] std::optional<PreferenceValue> stored(std::string_view key) {
        const PreferenceValue* value = store.value(store.handle(key));
        return value == nullptr ? std::nullopt : std::optional(*value);
    }
    void expectKept(const PreferenceValue& value) {
        store.set(store.handle("kept"), value);
        EXPECT_EQ(stored("kept"), value);
    }
};

TYPED_TEST_SUITE_P(PreferenceStoreContract);

TYPED_TEST_P(PreferenceStoreContract, HasNothingUnderAKeyNeverWritten) {
    EXPECT_EQ(this->stored("card_finder"), std::nullopt);
}

TYPED_TEST_P(PreferenceStoreContract, GivesOneHandlePerKey) {
    EXPECT_EQ(this->store.handle("a"), this->store.handle("a"));
    EXPECT_NE(this->store.handle("a"), this->store.handle("b"));
}

TYPED_TEST_P(PreferenceStoreContract, KeepsValuesOfEveryTypeAsTheyAre) {
    this->expectKept(true);
    this->expectKept(false);
    this->expectKept(std::int64_t{150});
    this->expectKept(std::int64_t{-1});
    this->expectKept(std::string("原按键"));
    this->expectKept(std::string());
    this->expectKept(StringList{"com.example.a", "com.example.b"});
    this->expectKept(StringList{});
    this->expectKept(PreferenceData{std::byte{0}, std::byte{255}});
    this->expectKept(PreferenceData{});
}

TYPED_TEST_P(PreferenceStoreContract, KeepsKeysApart) {
    this->store.set(this->store.handle("a"), true);
    this->store.set(this->store.handle("b"), std::string("x"));
    EXPECT_EQ(this->stored("a"), PreferenceValue(true));
    EXPECT_EQ(this->stored("b"), PreferenceValue(std::string("x")));
}

TYPED_TEST_P(PreferenceStoreContract, ForgetsWhatIsRemoved) {
    this->store.set(this->store.handle("a"), true);
    this->store.remove(this->store.handle("a"));
    EXPECT_EQ(this->stored("a"), std::nullopt);
    this->store.remove(this->store.handle("never"));
    EXPECT_EQ(this->stored("never"), std::nullopt);
}

TYPED_TEST_P(PreferenceStoreContract, SeesWhatAnotherProcessWrites) {
    this->store.set(this->store.handle("kept"), std::int64_t{1});
    this->harness.writeFromOutside("card_finder", PreferenceValue(true));
    EXPECT_EQ(this->stored("card_finder"), PreferenceValue(true));
    this->harness.writeFromOutside("card_finder", std::nullopt);
    EXPECT_EQ(this->stored("card_finder"), std::nullopt);
    EXPECT_EQ(this->stored("kept"), PreferenceValue(std::int64_t{1}));
}

REGISTER_TYPED_TEST_SUITE_P(PreferenceStoreContract, HasNothingUnderAKeyNeverWritten,
                            GivesOneHandlePerKey, KeepsValuesOfEveryTypeAsTheyAre, KeepsKeysApart,
                            ForgetsWhatIsRemoved, SeesWhatAnotherProcessWrites);

}  // namespace orvel::contract
