#pragma once

#include "platform/notifications.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::contract {

/// What every notification centre does. `Harness`:
///     Notifications& notifications();
///     void resignKey(PanelId panel);   the panel stops receiving the keyboard
///     void resignActive();             the program stops being the active one
template <typename Harness>
class NotificationsContract : public ::testing::Test {
protected:
    Harness harness;
    Notifications& notifications = harness.notifications();
    std::vector<std::string> told;

    [[nodiscard]] std::unique_ptr<NotificationObserver> observe(NotificationName name,
                                                                std::optional<PanelId> panel,
                                                                std::string note) {
        return notifications.observe(name, panel, "startMenu",
                                     [this, note = std::move(note)] { told.push_back(note); });
    }
};

TYPED_TEST_SUITE_P(NotificationsContract);

TYPED_TEST_P(NotificationsContract, TellsOfThePanelThatIsMeant) {
    const auto mine =
        this->observe(NotificationName::windowDidResignKey, PanelId::startMenu, "start menu");
    const auto any = this->observe(NotificationName::windowDidResignKey, std::nullopt, "any");
    this->harness.resignKey(PanelId::clipboard);
    EXPECT_THAT(this->told, ::testing::ElementsAre("any"));
    this->harness.resignKey(PanelId::startMenu);
    EXPECT_THAT(this->told, ::testing::UnorderedElementsAre("any", "start menu", "any"));
}

TYPED_TEST_P(NotificationsContract, KeepsNamesApart) {
    const auto active =
        this->observe(NotificationName::applicationDidResignActive, std::nullopt, "active");
    this->harness.resignKey(PanelId::startMenu);
    EXPECT_TRUE(this->told.empty());
    this->harness.resignActive();
    EXPECT_THAT(this->told, ::testing::ElementsAre("active"));
}

TYPED_TEST_P(NotificationsContract, TellsNobodyWhoIsGone) {
    auto gone = this->observe(NotificationName::applicationDidResignActive, std::nullopt, "gone");
    gone.reset();
    this->harness.resignActive();
    EXPECT_TRUE(this->told.empty());
}

REGISTER_TYPED_TEST_SUITE_P(NotificationsContract, TellsOfThePanelThatIsMeant, KeepsNamesApart,
                            TellsNobodyWhoIsGone);

}  // namespace orvel::contract
