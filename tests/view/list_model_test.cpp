#include "app/application.hpp"
#include "platform/memory/memory_desktop.hpp"
#include "settings_ui/view/drawn_key_list.hpp"
#include "settings_ui/view/feature_card_list.hpp"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace orvel::settings_view {
namespace {

class ListModelTest : public testing::Test {
protected:
    memory::MemoryDesktop desk;
    Application app{desk.ports()};
    SettingsModel& settings = app.settings();
};

TEST_F(ListModelTest, CardsTellOnlyOfTheCardThatChanged) {
    FeatureCardList cards(settings, kFeatureCards);
    const QAbstractItemModelTester tester(&cards);
    QSignalSpy changes(&cards, &QAbstractItemModel::dataChanged);
    settings.setCard(PreferenceKey::cardScroll, true);
    cards.refresh();
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 7);
    EXPECT_TRUE(cards.index(7).data(FeatureCardList::isOnRole).toBool());
}

TEST_F(ListModelTest, CardsTellNothingWhenNothingChanged) {
    FeatureCardList cards(settings, kFeatureCards);
    QSignalSpy changes(&cards, &QAbstractItemModel::dataChanged);
    settings.setCard(PreferenceKey::cardScroll, false);
    cards.refresh();
    EXPECT_EQ(changes.size(), 0);
}

TEST_F(ListModelTest, TheModifierCardFollowsTheMaps) {
    FeatureCardList cards(settings, kFeatureCards);
    settings.setCard(PreferenceKey::cardModifier, true);
    cards.refresh();
    EXPECT_EQ(cards.index(0).data(FeatureCardList::textRole).toString().toStdString(),
              settings.editor().modifierText());
}

TEST_F(ListModelTest, KeysTellOnlyOfTheKeyThatChanged) {
    DrawnKeyList keys(settings.editor());
    const QAbstractItemModelTester tester(&keys);
    QSignalSpy changes(&keys, &QAbstractItemModel::dataChanged);
    settings.setMap(PreferenceKey::mapRightOption, ModifierTarget::win);
    keys.refresh();
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 6);
    EXPECT_EQ(keys.index(6).data(DrawnKeyList::targetRole).toString(), "Win");
}

TEST_F(ListModelTest, IndexesOutsideTheListHaveNoData) {
    FeatureCardList cards(settings, kFeatureCards);
    DrawnKeyList keys(settings.editor());
    EXPECT_FALSE(cards.data({}, FeatureCardList::isOnRole).isValid());
    EXPECT_FALSE(keys.data({}, DrawnKeyList::labelRole).isValid());
}

}  // namespace
}  // namespace orvel::settings_view

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
