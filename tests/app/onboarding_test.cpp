#include "app/application.hpp"
#include "settings_ui/essential_texts.hpp"
#include "tests/support/memory_fixture.hpp"

#include <gmock/gmock.h>

namespace orvel {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class OnboardingTest : public test::MemoryFixture {
protected:
    void find(std::vector<EssentialFinding> findings) {
        desk.essentials.findings = std::move(findings);
    }
    void show() { model.setShown(true); }
    bool isPageShown() { return model.isNeeded(); }

    Application app{desk.ports()};
    OnboardingModel& model = app.onboarding();
};

TEST_F(OnboardingTest, WithEverythingThereTheSettingsShowAtOnce) {
    show();
    EXPECT_FALSE(isPageShown());
    advance(5);
    EXPECT_FALSE(isPageShown());
}

TEST_F(OnboardingTest, SomethingMissingShowsThePage) {
    find({{Essential::keyboard, true}, {Essential::keyboardControl, false}});
    show();
    EXPECT_TRUE(isPageShown());
    EXPECT_FALSE(model.isComplete());
    EXPECT_EQ(model.findings().get(), desk.essentials.findings);
}

TEST_F(OnboardingTest, WhatIsMendedTicksWhileThePanelStaysOpen) {
    find({{Essential::keyboard, false}, {Essential::keyboardControl, false}});
    show();
    find({{Essential::keyboard, true}, {Essential::keyboardControl, false}});
    advance(1);
    EXPECT_TRUE(isPageShown());
    EXPECT_TRUE(model.findings().get()[0].isThere);
    EXPECT_FALSE(model.findings().get()[1].isThere);
}

TEST_F(OnboardingTest, ThePageGivesWayAMomentAfterTheLastTick) {
    find({{Essential::keyboard, false}});
    show();
    find({{Essential::keyboard, true}});
    advance(1);
    EXPECT_TRUE(model.isComplete());
    EXPECT_TRUE(isPageShown());
    advance(1.2);
    EXPECT_FALSE(isPageShown());
}

TEST_F(OnboardingTest, WhatGoesAgainMeanwhileKeepsThePage) {
    find({{Essential::keyboard, false}});
    show();
    find({{Essential::keyboard, true}});
    advance(1);
    find({{Essential::keyboard, false}});
    advance(3);
    EXPECT_TRUE(isPageShown());
}

TEST_F(OnboardingTest, APanelOpenedLaterShowsTheSettingsAtOnce) {
    find({{Essential::keyboard, false}});
    show();
    model.setShown(false);
    find({{Essential::keyboard, true}});
    show();
    EXPECT_FALSE(isPageShown());
}

TEST_F(OnboardingTest, NothingIsLookedAtWhileThePanelIsClosed) {
    find({{Essential::keyboard, false}});
    show();
    model.setShown(false);
    find({{Essential::keyboard, true}});
    advance(10);
    EXPECT_FALSE(model.isComplete());
}

TEST_F(OnboardingTest, TheEngineStartsAsSoonAsThePermissionIsThere) {
    desk.world.isTrusted = false;
    find({{Essential::accessibilityPermission, false}});
    app.delegate().activateMainApp();
    show();
    EXPECT_FALSE(desk.eventTap.exists());
    desk.world.isTrusted = true;
    find({{Essential::accessibilityPermission, true}});
    advance(1);
    EXPECT_TRUE(desk.eventTap.exists());
}

TEST_F(OnboardingTest, ARetryAsksForTheKeyboardAgain) {
    find({{Essential::keyboardControl, false}});
    show();
    EXPECT_FALSE(desk.eventTap.exists());
    find({{Essential::keyboardControl, true}});
    model.retry();
    EXPECT_TRUE(desk.eventTap.exists());
    EXPECT_TRUE(model.isComplete());
}

TEST_F(OnboardingTest, TheSettingsCanBeSeenWhileSomethingIsMissing) {
    find({{Essential::keyboard, false}});
    show();
    model.dismiss();
    advance(5);
    EXPECT_FALSE(isPageShown());
    model.setShown(false);
    show();
    EXPECT_TRUE(isPageShown());
}

TEST_F(OnboardingTest, TheSystemsSettingsOpenWhereThePermissionIsGiven) {
    lookAway();
    model.openSettings(Essential::accessibilityPermission);
    EXPECT_THAT(effects(), Contains(HasSubstr("Privacy_Accessibility")));
    model.openSettings(Essential::keyboard);
    EXPECT_THAT(effects(), testing::IsEmpty());
}

TEST(EssentialTexts, EverySentenceEndsAsOne) {
    for (const Essential essential :
         {Essential::accessibilityPermission, Essential::effectivePermission, Essential::keyboard,
          Essential::keyboardControl}) {
        const EssentialText text = textOf(essential);
        EXPECT_FALSE(text.name.empty());
        EXPECT_TRUE(text.stops.ends_with("。"));
        EXPECT_TRUE(text.remedy.ends_with("。"));
    }
}

}  // namespace
}  // namespace orvel
