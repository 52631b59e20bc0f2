#include "settings_ui/feature_cards.hpp"

#include "settings_ui/keyboard_drawing.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace orvel {
namespace {

TEST(FeatureCards, EveryCardHasATitleAndASymbolOfItsOwn) {
    std::set<std::string_view> titles;
    std::set<std::string_view> symbols;
    for (const FeatureCard& card : kFeatureCards) {
        titles.insert(card.title());
        symbols.insert(card.symbol);
    }
    EXPECT_EQ(titles.size(), kFeatureCards.size());
    EXPECT_EQ(symbols.size(), kFeatureCards.size());
    EXPECT_FALSE(titles.contains(""));
    EXPECT_FALSE(symbols.contains(""));
}

TEST(FeatureCards, OnlyTheTwoKeyboardCardsHaveALiveText) {
    for (const FeatureCard& card : kFeatureCards) {
        const bool isKeyboardCard =
            card.key == PreferenceKey::cardModifier || card.key == PreferenceKey::cardEject;
        EXPECT_EQ(card.hasLiveText(), isKeyboardCard) << card.title();
    }
}

TEST(FeatureCards, NeighboursInTheGridDifferInColour) {
    constexpr std::size_t kColumns = 3;
    for (std::size_t i = 0; i < kFeatureCards.size(); ++i) {
        const bool hasRightNeighbour = i % kColumns + 1 < kColumns;
        if (hasRightNeighbour) {
            EXPECT_NE(kFeatureCards[i].color, kFeatureCards[i + 1].color) << i;
        }
        if (i + kColumns < kFeatureCards.size()) {
            EXPECT_NE(kFeatureCards[i].color, kFeatureCards[i + kColumns].color) << i;
        }
    }
}

TEST(KeyboardDrawing, EveryMapHasOneKeyAndAListLabelOfItsOwn) {
    std::set<PreferenceKey> maps;
    std::set<std::string_view> labels;
    for (const DrawnKey& key : kDrawnKeys) {
        if (key.map) maps.insert(*key.map);
        labels.insert(key.listLabel);
    }
    EXPECT_EQ(maps,
              (std::set{PreferenceKey::mapCtrl, PreferenceKey::mapOption, PreferenceKey::mapCmd,
                        PreferenceKey::mapRightCmd, PreferenceKey::mapRightOption}));
    EXPECT_EQ(labels.size(), kDrawnKeys.size());
}

}  // namespace
}  // namespace orvel
