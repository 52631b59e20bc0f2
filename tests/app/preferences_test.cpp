#include "app/preferences.hpp"

#include "platform/memory/memory_desktop.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <set>

namespace orvel::test {
namespace {

class TypedPreferences : public ::testing::Test {
protected:
    memory::MemoryDesktop desk;
    Preferences preferences{desk.preferenceStore};

    /// Another process stores a value.
    void stored(PreferenceKey key, PreferenceValue value) {
        desk.preferenceStore.writeFromOutside(preferenceInfo(key).name, std::move(value));
    }
    bool readsTrue(PreferenceValue value) {
        stored(PreferenceKey::cardSnap, std::move(value));
        EXPECT_EQ(preferences.shownFlag(PreferenceKey::cardSnap),
                  preferences.boolForKey(PreferenceKey::cardSnap));
        return preferences.boolForKey(PreferenceKey::cardSnap);
    }
    std::optional<std::string> text(PreferenceValue value) {
        stored(PreferenceKey::mapCtrl, std::move(value));
        return preferences.stringForKey(PreferenceKey::mapCtrl);
    }
};

TEST(PreferenceTable, NamesAreUniqueAndFound) {
    std::set<std::string_view> names;
    for (const PreferenceInfo& info : kPreferenceTable) {
        EXPECT_TRUE(names.insert(info.name).second) << info.name;
        EXPECT_EQ(findPreference(info.name), &preferenceInfo(info.key));
    }
    EXPECT_EQ(findPreference("card_snp"), nullptr);
    EXPECT_EQ(findPreference(""), nullptr);
}

TEST(PreferenceTable, CardsComeFirstAndOnlyTheyHaveTitles) {
    for (std::size_t i = 0; i < kPreferenceTable.size(); ++i) {
        EXPECT_EQ(!kPreferenceTable[i].cardTitle.empty(), i < kFeatureCardCount)
            << kPreferenceTable[i].name;
    }
}

TEST_F(TypedPreferences, AbsentSwitchesReadAsFalseAndShowTheDefaultOfTheTable) {
    const std::set<PreferenceKey> shownOn{PreferenceKey::cardFkeys, PreferenceKey::cardMouseSide,
                                          PreferenceKey::cardAltMenu, PreferenceKey::cardDragDrop};
    for (std::size_t i = 0; i < kFeatureCardCount; ++i) {
        const PreferenceKey key = kPreferenceTable[i].key;
        EXPECT_FALSE(preferences.boolForKey(key)) << kPreferenceTable[i].name;
        EXPECT_EQ(preferences.shownFlag(key), shownOn.contains(key)) << kPreferenceTable[i].name;
    }
}

TEST_F(TypedPreferences, AbsentChoicesHaveNoTextAndShowTheDefaultOfTheTable) {
    EXPECT_EQ(preferences.stringForKey(PreferenceKey::mapRightCmd), std::nullopt);
    EXPECT_EQ(preferences.shownText(PreferenceKey::mapRightCmd), "原按键");
    EXPECT_EQ(preferences.shownText(PreferenceKey::deleteStrategy), "组合键");
    EXPECT_EQ(preferences.shownText(PreferenceKey::deleteComboMod), "Shift");
    EXPECT_EQ(preferences.shownText(PreferenceKey::deleteSingleKey), "F12");
    EXPECT_EQ(preferences.stringArrayForKey(PreferenceKey::pinnedApps), std::nullopt);
    EXPECT_EQ(preferences.dataForKey(PreferenceKey::clipboardHistory), std::nullopt);
}

TEST_F(TypedPreferences, WritesAreReadBackAtOnce) {
    preferences.setBool(PreferenceKey::cardSnap, true);
    preferences.setString(PreferenceKey::mapCtrl, "Cmd");
    preferences.setInteger(PreferenceKey::initialToolTipDelay, 150);
    preferences.setStringArray(PreferenceKey::pinnedApps, {"a", "b"});
    preferences.setData(PreferenceKey::clipboardHistory, {std::byte{1}});
    EXPECT_TRUE(preferences.boolForKey(PreferenceKey::cardSnap));
    EXPECT_EQ(preferences.stringForKey(PreferenceKey::mapCtrl), "Cmd");
    EXPECT_EQ(preferences.stringArrayForKey(PreferenceKey::pinnedApps), (StringList{"a", "b"}));
    EXPECT_EQ(preferences.dataForKey(PreferenceKey::clipboardHistory),
              PreferenceData{std::byte{1}});
}

TEST_F(TypedPreferences, AnotherProcessIsReadAtOnce) {
    stored(PreferenceKey::cardSnap, true);
    EXPECT_TRUE(preferences.boolForKey(PreferenceKey::cardSnap));
    desk.preferenceStore.writeFromOutside("card_snap", std::nullopt);
    EXPECT_FALSE(preferences.boolForKey(PreferenceKey::cardSnap));
}

TEST_F(TypedPreferences, NumbersThatAreNotZeroReadAsTrue) {
    EXPECT_TRUE(readsTrue(std::int64_t{1}));
    EXPECT_TRUE(readsTrue(std::int64_t{-7}));
    EXPECT_FALSE(readsTrue(std::int64_t{0}));
    EXPECT_TRUE(readsTrue(0.5));
    EXPECT_FALSE(readsTrue(0.0));
}

TEST_F(TypedPreferences, SomeTextsReadAsTrue) {
    for (const char* yes : {"YES", "yes", "Y", "y", "true", "TRUE", "T", "t", "1", "9", "12", "007",
                            "+1", "-3", "  1", "1x", "0y"}) {
        EXPECT_TRUE(readsTrue(yes)) << yes;
    }
    for (const char* no :
         {"NO", "no", "false", "F", "n", "0", "000", "", " ", "+", "-0", "x1", "on"}) {
        EXPECT_FALSE(readsTrue(no)) << no;
    }
}

TEST_F(TypedPreferences, WhatIsNeitherNumberNorTextReadsAsFalse) {
    EXPECT_FALSE(readsTrue(StringList{"YES"}));
    EXPECT_FALSE(readsTrue(PreferenceData{std::byte{1}}));
    EXPECT_FALSE(readsTrue(ForeignPreference{}));
    stored(PreferenceKey::cardFkeys, ForeignPreference{});
    EXPECT_FALSE(preferences.shownFlag(PreferenceKey::cardFkeys))
        << "only absence gives the default";
}

TEST_F(TypedPreferences, NumbersReadAsDecimalText) {
    EXPECT_EQ(text(std::int64_t{-150}), "-150");
    EXPECT_EQ(text(1.5), "1.5");
    EXPECT_EQ(text(true), "1");
    EXPECT_EQ(text(false), "0");
    EXPECT_EQ(text("Cmd"), "Cmd");
}

TEST_F(TypedPreferences, WhatIsNoTextReadsAsAbsentText) {
    EXPECT_EQ(text(StringList{"Cmd"}), std::nullopt);
    EXPECT_EQ(text(PreferenceData{}), std::nullopt);
    EXPECT_EQ(text(ForeignPreference{}), std::nullopt);
    EXPECT_EQ(preferences.shownText(PreferenceKey::mapCtrl), "原按键");
}

TEST_F(TypedPreferences, WhatIsNoListOfTextsOrNoDataReadsAsAbsent) {
    for (const PreferenceValue& value :
         {PreferenceValue("a"), PreferenceValue(true), PreferenceValue(ForeignPreference{})}) {
        stored(PreferenceKey::pinnedApps, value);
        stored(PreferenceKey::clipboardHistory, value);
        EXPECT_EQ(preferences.stringArrayForKey(PreferenceKey::pinnedApps), std::nullopt);
        EXPECT_EQ(preferences.dataForKey(PreferenceKey::clipboardHistory), std::nullopt);
    }
    stored(PreferenceKey::pinnedApps, StringList{});
    EXPECT_EQ(preferences.stringArrayForKey(PreferenceKey::pinnedApps), StringList{});
}

}  // namespace
}  // namespace orvel::test
