#pragma once

#include "platform/panels.hpp"

#include <gtest/gtest.h>

namespace orvel::contract {

/// What every maker of panels does. `Harness`:
///     Panels& panels();
///     void settle();
template <typename Harness>
class PanelsContract : public ::testing::Test {
protected:
    static constexpr ScreenRect kFrame{20, 40, 300, 200};

    Harness harness;

    [[nodiscard]] std::unique_ptr<Panel> made() {
        auto panel = harness.panels().create({.id = PanelId::finderMenu, .contentRect = kFrame});
        harness.settle();
        return panel;
    }
    void expectFrame(const Panel& panel, ScreenRect frame) {
        harness.settle();
        EXPECT_EQ(panel.frame(), frame);
    }
};

TYPED_TEST_SUITE_P(PanelsContract);

TYPED_TEST_P(PanelsContract, MakesAPanelThatIsNotShownYet) {
    const auto panel = this->made();
    ASSERT_NE(panel, nullptr);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(panel->frame(), this->kFrame);
}

TYPED_TEST_P(PanelsContract, ShowsAndHides) {
    const auto panel = this->made();
    panel->orderFrontRegardless();
    this->harness.settle();
    EXPECT_TRUE(panel->isVisible());
    panel->orderOut();
    this->harness.settle();
    EXPECT_FALSE(panel->isVisible());
    panel->makeKeyAndOrderFront();
    this->harness.settle();
    EXPECT_TRUE(panel->isVisible());
}

TYPED_TEST_P(PanelsContract, TakesAFrameWhetherShownOrNot) {
    const auto panel = this->made();
    panel->setFrame({50, 60, 350, 250});
    this->expectFrame(*panel, {50, 60, 350, 250});
    panel->orderFrontRegardless();
    panel->setFrame({70, 80, 320, 220});
    this->expectFrame(*panel, {70, 80, 320, 220});
}

TYPED_TEST_P(PanelsContract, KeepsItsSizeWhenItMoves) {
    const auto panel = this->made();
    panel->orderFrontRegardless();
    panel->setFrameOrigin({90, 110});
    this->expectFrame(*panel, {90, 110, 300, 200});
}

TYPED_TEST_P(PanelsContract, MayBeMadeAgain) {
    auto panel = this->made();
    panel->orderFrontRegardless();
    panel.reset();
    panel = this->made();
    EXPECT_FALSE(panel->isVisible());
    panel->orderFrontRegardless();
    this->expectFrame(*panel, this->kFrame);
}

REGISTER_TYPED_TEST_SUITE_P(PanelsContract, MakesAPanelThatIsNotShownYet, ShowsAndHides,
                            TakesAFrameWhetherShownOrNot, KeepsItsSizeWhenItMoves, MayBeMadeAgain);

}  // namespace orvel::contract
