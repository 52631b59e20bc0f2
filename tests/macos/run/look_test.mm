#include "platform/macos/mac_look.hpp"
#include "tests/macos/run/mac_test.hpp"

namespace orvel::macos {
namespace {

class MacLookTest : public MacTest {};

TEST_F(MacLookTest, ReadsWhatPeopleChose) {
    EXPECT_EQ(readLook(), (Look{.isDark = false, .isTranslucent = true, .isStill = false}));
    mac().isDark = true;
    mac().reducesMotion = true;
    mac().reducesTransparency = true;
    EXPECT_EQ(readLook(), (Look{.isDark = true, .isTranslucent = false, .isStill = true}));
}

TEST_F(MacLookTest, TellsOfChangesOnceTheApplicationKnowsThem) {
    int told = 0;
    const LookNotices notices([&] { ++told; });
    fake::postNotification(fake::Center::distributed, "AppleInterfaceThemeChangedNotification");
    EXPECT_EQ(told, 0);
    fake::runDue();
    EXPECT_EQ(told, 1);
    fake::postNotification(fake::Center::workspace,
                           "NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification");
    fake::runDue();
    EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace orvel::macos
