#pragma once

#include "platform/base/key_codes.hpp"
#include "platform/event_monitors.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::contract {

/// What everyone who watches clicks and keys does. `Harness`:
///     EventMonitors& monitors();
///     void click(EventMask type, std::optional<PanelId> window);
///         a button goes down in that panel, or (absent) in another application
///     void pressKey(KeyCode key, std::optional<PanelId> window);
///         likewise a key, while the keyboard is that panel's or another application's
template <typename Harness>
class EventMonitorsContract : public ::testing::Test {
protected:
    static constexpr EventMask kButtons =
        monitor_mask::leftMouseDown | monitor_mask::rightMouseDown;

    Harness harness;
    EventMonitors& monitors = harness.monitors();
    std::vector<std::string> seen;

    [[nodiscard]] std::unique_ptr<EventMonitor> watch(MonitorScope scope, std::string name,
                                                      bool delivers = true) {
        return monitors.add(scope, kButtons, "startMenu",
                            [this, name = std::move(name), delivers](const MonitoredEvent&) {
                                seen.push_back(name);
                                return delivers;
                            });
    }
};

TYPED_TEST_SUITE_P(EventMonitorsContract);

TYPED_TEST_P(EventMonitorsContract, TellsGlobalMonitorsOfOtherApplicationsOnly) {
    const auto monitor = this->watch(MonitorScope::global, "global");
    this->harness.click(monitor_mask::leftMouseDown, PanelId::startMenu);
    EXPECT_TRUE(this->seen.empty());
    this->harness.click(monitor_mask::rightMouseDown, std::nullopt);
    EXPECT_THAT(this->seen, ::testing::ElementsAre("global"));
}

TYPED_TEST_P(EventMonitorsContract, TellsLocalMonitorsOfOurWindowsOnly) {
    std::optional<PanelId> window;
    const auto monitor = this->monitors.add(MonitorScope::local, this->kButtons, "startMenu",
                                            [&](const MonitoredEvent& event) {
                                                window = event.window;
                                                return true;
                                            });
    this->harness.click(monitor_mask::leftMouseDown, std::nullopt);
    EXPECT_EQ(window, std::nullopt);
    this->harness.click(monitor_mask::leftMouseDown, PanelId::startMenu);
    EXPECT_EQ(window, PanelId::startMenu);
}

TYPED_TEST_P(EventMonitorsContract, WatchesOnlyWhatItsMaskNames) {
    const auto monitor = this->watch(MonitorScope::global, "global");
    this->harness.click(monitor_mask::otherMouseDown, std::nullopt);
    EXPECT_TRUE(this->seen.empty());
}

TYPED_TEST_P(EventMonitorsContract, SeesNothingMoreOnceRemoved) {
    auto monitor = this->watch(MonitorScope::global, "global");
    monitor.reset();
    this->harness.click(monitor_mask::leftMouseDown, std::nullopt);
    EXPECT_TRUE(this->seen.empty());
}

TYPED_TEST_P(EventMonitorsContract, MayRemoveItselfAndOthersWhileItIsTold) {
    std::unique_ptr<EventMonitor> first;
    std::unique_ptr<EventMonitor> second;
    first = this->monitors.add(MonitorScope::global, this->kButtons, "startMenu",
                               [&](const MonitoredEvent&) {
                                   this->seen.emplace_back("first");
                                   second.reset();
                                   first.reset();
                                   return true;
                               });
    second = this->watch(MonitorScope::global, "second");
    this->harness.click(monitor_mask::leftMouseDown, std::nullopt);
    this->harness.click(monitor_mask::leftMouseDown, std::nullopt);
    EXPECT_THAT(this->seen, ::testing::ElementsAre("first"));
}

TYPED_TEST_P(EventMonitorsContract, TellsGlobalMonitorsWhichKeyWentToAnotherApplication) {
    std::vector<KeyCode> keys;
    const auto monitor = this->monitors.add(MonitorScope::global, monitor_mask::keyDown,
                                            "clipboard", [&](const MonitoredEvent& event) {
                                                EXPECT_EQ(event.type, monitor_mask::keyDown);
                                                EXPECT_EQ(event.window, std::nullopt);
                                                keys.push_back(event.keyCode);
                                                return true;
                                            });
    this->harness.pressKey(key::escape, std::nullopt);
    this->harness.pressKey(key::a, PanelId::clipboard);
    this->harness.click(monitor_mask::leftMouseDown, std::nullopt);
    this->harness.pressKey(key::z, std::nullopt);
    EXPECT_THAT(keys, ::testing::ElementsAre(key::escape, key::z));
}

TYPED_TEST_P(EventMonitorsContract, TellsLocalMonitorsWhichKeyAPanelGot) {
    std::vector<KeyCode> keys;
    const auto monitor = this->monitors.add(MonitorScope::local, monitor_mask::keyDown, "clipboard",
                                            [&](const MonitoredEvent& event) {
                                                EXPECT_EQ(event.window, PanelId::clipboard);
                                                keys.push_back(event.keyCode);
                                                return true;
                                            });
    this->harness.pressKey(key::a, std::nullopt);
    this->harness.pressKey(key::escape, PanelId::clipboard);
    EXPECT_THAT(keys, ::testing::ElementsAre(key::escape));
}

TYPED_TEST_P(EventMonitorsContract, WhatALocalMonitorKeepsIsToldToNobodyElse) {
    const auto keeper = this->monitors.add(MonitorScope::local, monitor_mask::keyDown, "clipboard",
                                           [&](const MonitoredEvent&) { return false; });
    const auto later = this->monitors.add(MonitorScope::local, monitor_mask::keyDown, "startMenu",
                                          [&](const MonitoredEvent&) {
                                              this->seen.emplace_back("later");
                                              return true;
                                          });
    this->harness.pressKey(key::escape, PanelId::clipboard);
    EXPECT_TRUE(this->seen.empty());
}

REGISTER_TYPED_TEST_SUITE_P(EventMonitorsContract, TellsGlobalMonitorsOfOtherApplicationsOnly,
                            TellsLocalMonitorsOfOurWindowsOnly, WatchesOnlyWhatItsMaskNames,
                            SeesNothingMoreOnceRemoved, MayRemoveItselfAndOthersWhileItIsTold,
                            TellsGlobalMonitorsWhichKeyWentToAnotherApplication,
                            TellsLocalMonitorsWhichKeyAPanelGot,
                            WhatALocalMonitorKeepsIsToldToNobodyElse);

}  // namespace orvel::contract
