#include "platform/qt/chinese_fonts.hpp"
#include "tests/view/panel_stage.hpp"
#include "tests/view/picture_compare.hpp"

#include <QFont>
#include <QGuiApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace orvel::test {
namespace {

/// One look of the panel. The scale is that of the process: the program runs once per scale.
struct Look {
    const char* name;
    bool isDark;
    bool isComposited;
    void (*prepare)(PanelStage&);
    const char* pressed = nullptr;  ///< clicked before the picture is taken
};

void asInstalled(PanelStage&) {}

void allOn(PanelStage& stage) { stage.app.settings().setMaster(true); }

void paused(PanelStage& stage) { stage.app.engine().setPaused(true); }

void longestTexts(PanelStage& stage) {
    stage.prefer("card_eject", true);
    stage.prefer("delete_strategy", std::string("牺牲单键"));
    stage.prefer("delete_single_key", std::string("` (波浪号)"));
}

void scrolledDown(PanelStage& stage) {
    allOn(stage);
    stage.whenShown = [](PanelStage& shown) { shown.item("cards").setProperty("contentY", 260.0); };
}

void keyboardMissing(PanelStage& stage) {
    stage.desk.essentials.findings = {{Essential::keyboard, false},
                                      {Essential::keyboardControl, true}};
}

void nothingThere(PanelStage& stage) {
    stage.desk.essentials.findings = {{Essential::keyboard, false},
                                      {Essential::keyboardControl, false}};
}

void permissionMissing(PanelStage& stage) {
    stage.desk.essentials.findings = {{Essential::accessibilityPermission, false}};
}

void permissionWithoutEffect(PanelStage& stage) {
    stage.desk.essentials.findings = {{Essential::accessibilityPermission, true},
                                      {Essential::effectivePermission, false}};
}

/// The moment between the last tick and the settings.
void justMended(PanelStage& stage) {
    keyboardMissing(stage);
    stage.whenShown = [](PanelStage& shown) {
        shown.desk.essentials.findings.front().isThere = true;
        shown.viewModel.onboarding()->retry();
    };
}

constexpr Look kLooks[] = {
    {"fresh_light", false, true, asInstalled},
    {"fresh_dark", true, true, asInstalled},
    {"all_on_light", false, true, allOn},
    {"all_on_dark", true, true, allOn},
    {"opaque_light", false, false, asInstalled},
    {"opaque_dark", true, false, asInstalled},
    {"scrolled_light", false, true, scrolledDown},
    {"longest_texts_light", false, true, longestTexts},
    {"paused_light", false, true, paused},
    {"paused_dark", true, true, paused},
    {"key_menu_light", false, true, allOn, "key.右cmd"},
    {"key_menu_dark", true, true, allOn, "key.ctrl"},
    {"combination_menu_light", false, true, asInstalled, "comboMenu"},
    {"onboarding_light", false, true, keyboardMissing},
    {"onboarding_dark", true, true, keyboardMissing},
    {"onboarding_nothing_there_light", false, true, nothingThere},
    {"onboarding_permission_light", false, true, permissionMissing},
    {"onboarding_permission_dark", true, true, permissionMissing},
    {"onboarding_without_effect_light", false, true, permissionWithoutEffect},
    {"onboarding_ready_light", false, true, justMended},
    {"onboarding_ready_dark", true, true, justMended},
    {"help_light", false, true, allOn, "info.0"},
    {"help_dark", true, true, allOn, "info.1"},
};

class SettingsPicture : public testing::TestWithParam<Look> {};

TEST_P(SettingsPicture, LooksAsAccepted) {
    const Look& look = GetParam();
    PanelStage stage;
    stage.appearance.setDark(look.isDark);
    stage.appearance.setComposited(look.isComposited);
    look.prepare(stage);
    stage.show();
    if (look.pressed != nullptr) stage.click(look.pressed);
    EXPECT_TRUE(looksAsAccepted(std::string("settings_") + look.name, stage.picture()));
}

INSTANTIATE_TEST_SUITE_P(Looks, SettingsPicture, testing::ValuesIn(kLooks),
                         [](const auto& look) { return std::string(look.param.name); });

}  // namespace
}  // namespace orvel::test

int main(int argc, char** argv) {
    QQuickWindow::setDefaultAlphaBuffer(true);
    QGuiApplication application(argc, argv);
    QGuiApplication::setFont(QFont("Noto Sans"));
    orvel::qt::preferSimplifiedChinese();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
