#include "platform/qt/quick_panel_host.hpp"

#include <gtest/gtest.h>

namespace orvel::qt {
namespace {

constexpr QRect kAvailable(0, 26, 1280, 774);

TEST(PanelPlacement, LeavesAPanelThatIsOnTheScreen) {
    EXPECT_EQ(keptOnScreen(QRect(500, 40, 350, 550), kAvailable, {}), QRect(500, 40, 350, 550));
}

TEST(PanelPlacement, KeepsTenPointsToEitherSide) {
    EXPECT_EQ(keptOnScreen(QRect(-90, 40, 350, 550), kAvailable, {}).x(), 10);
    EXPECT_EQ(keptOnScreen(QRect(1200, 40, 350, 550), kAvailable, {}).x(), 920);
}

TEST(PanelPlacement, StandsAboveAButtonAtTheBottomOfTheScreen) {
    const QRect button(1200, 780, 22, 20);
    EXPECT_EQ(keptOnScreen(QRect(1036, 808, 350, 550), kAvailable, button).y(), 222);
}

TEST(PanelPlacement, AsksForNothingWithoutAScreen) {
    EXPECT_EQ(keptOnScreen(QRect(-90, -40, 350, 550), {}, {}), QRect(-90, -40, 350, 550));
}

}  // namespace
}  // namespace orvel::qt
