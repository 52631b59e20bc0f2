#include "settings_ui/settings_model.hpp"

#include "app/application.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel {
namespace {

class SettingsModelTest : public test::MemoryFixture {
protected:
    [[nodiscard]] bool isEngineOn() { return app.engine().isWindowsModeEnabled(); }

    Application app{desk.ports()};
    SettingsModel& settings = app.settings();
};

TEST_F(SettingsModelTest, EveryActionAsksViewsToReadAgain) {
    int reads = 0;
    const Subscription subscription = settings.revision().subscribe([&](auto) { ++reads; });
    settings.appear();
    settings.setCard(PreferenceKey::cardSnap, true);
    settings.setCard(PreferenceKey::cardSnap, true);
    settings.setMap(PreferenceKey::mapCtrl, ModifierTarget::alt);
    settings.setDeleteStrategy(DeleteStrategy::sacrifice);
    EXPECT_EQ(reads, 5);
}

TEST_F(SettingsModelTest, TurnsTheEngineOffWithTheLastCard) {
    settings.appear();
    ASSERT_TRUE(isEngineOn());
    settings.setMaster(false);
    EXPECT_FALSE(isEngineOn());
}

TEST_F(SettingsModelTest, LeavesTheEngineAloneUntilThePanelWasShown) {
    settings.setMaster(true);
    EXPECT_FALSE(isEngineOn());
}

TEST_F(SettingsModelTest, CopiesTheTwoEngineSwitchesWhenThePanelAppears) {
    prefer("cardMouseSide", false);
    prefer("cardAltMenu", std::string("NO"));
    settings.appear();
    EXPECT_FALSE(app.engine().state().isMouseSideButtonEnabled);
    EXPECT_FALSE(app.engine().state().isAltMenuEnabled);
}

TEST_F(SettingsModelTest, WritesTheTwoEngineSwitchesThroughToTheEngine) {
    settings.setCard(PreferenceKey::cardMouseSide, false);
    EXPECT_FALSE(app.engine().state().isMouseSideButtonEnabled);
    settings.setMaster(true);
    EXPECT_TRUE(app.engine().state().isMouseSideButtonEnabled);
    settings.setMaster(false);
    EXPECT_FALSE(app.engine().state().isAltMenuEnabled);
}

TEST_F(SettingsModelTest, ResumesAPausedEngine) {
    app.engine().setPaused(true);
    settings.resume();
    EXPECT_FALSE(app.engine().isPaused());
}

TEST_F(SettingsModelTest, ShowsTheDefaultForAStoredTextThatIsNoChoice) {
    prefer("map_ctrl", std::string("Hyper"));
    prefer("delete_strategy", std::string("magic"));
    prefer("delete_combo_mod", std::int64_t{7});
    EXPECT_EQ(settings.editor().target(PreferenceKey::mapCtrl), ModifierTarget::itself);
    EXPECT_EQ(settings.editor().strategy(), DeleteStrategy::combo);
    EXPECT_EQ(settings.editor().comboModifier(), ComboModifier::shift);
}

TEST_F(SettingsModelTest, KeepsBothDeleteChoicesWhileTheStrategyChanges) {
    settings.setComboModifier(ComboModifier::option);
    settings.setSacrificeKey(SingleSacrificeKey::f10);
    settings.setDeleteStrategy(DeleteStrategy::sacrifice);
    settings.setDeleteStrategy(DeleteStrategy::combo);
    EXPECT_EQ(settings.editor().comboModifier(), ComboModifier::option);
    EXPECT_EQ(settings.editor().sacrificeKey(), SingleSacrificeKey::f10);
}

TEST_F(SettingsModelTest, TheHelpNamesEveryChangedKeyAndItsTarget) {
    prefer("card_modifier", true);
    prefer("map_ctrl", std::string("Cmd"));
    prefer("map_right_cmd", std::string("Alt"));
    const std::string help = settings.editor().modifierHelp();
    EXPECT_NE(help.find("ctrl 键作为 Cmd，右cmd 键作为 Alt"), help.npos) << help;
}

}  // namespace
}  // namespace orvel
