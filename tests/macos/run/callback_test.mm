#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/input_state.hpp"
#include "platform/launcher.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/preference_store.hpp"
#include "platform/run_loop.hpp"
#include "platform/workspace.hpp"
#include "tests/macos/run/mac_test.hpp"

#include <array>

namespace orvel::macos {
namespace {

class MacCallbackTest : public MacTest {};

TEST_F(MacCallbackTest, WhatTheCallbackOpensWaitsForNoOtherProgram) {
    const auto loop = makeRunLoop();
    const auto launcher = makeLauncher(*loop);
    LogLines log;
    const auto poster = makeEventPoster();
    const auto input = makeInputState();
    const auto tap = makeEventTap(*poster, *input, log);
    ASSERT_TRUE(tap->create({.mask = ~EventMask{0}}, [&](Event&) {
        launcher->openUrl("x-apple.systempreferences:");
        launcher->revealInFileManager("/Users/me");
        launcher->openApplication("/A.app", std::nullopt);
        return EventVerdict::swallow;
    }));
    tap->enable();
    mac().slowCalls = 0;
    fake::sendKey({.type = 10, .keyCode = 14});
    EXPECT_EQ(mac().slowCalls, 0);
    fake::runDue();
    EXPECT_EQ(mac().launched.size(), 3U);
}

TEST_F(MacCallbackTest, WhatTheCallbackAsksWaitsForNoOtherProgram) {
    mac().applications[11] = {.bundleId = "com.apple.finder", .isActive = true, .isHung = true};
    mac().frontmost = 11;
    mac().pasteboardHangs = true;
    LogLines log;
    const auto workspace = makeWorkspace();
    const auto store = makePreferenceStore();
    const auto card = store->handle("card_finder");
    const auto poster = makeEventPoster();
    const auto input = makeInputState();
    const auto tap = makeEventTap(*poster, *input, log);
    std::string front;
    ASSERT_TRUE(tap->create({.mask = ~EventMask{0}}, [&](Event&) {
        front = workspace->frontmostApplication()->bundleId.value_or("");
        static_cast<void>(store->value(card));
        static_cast<void>(input->hidFlags());
        static_cast<void>(input->isKeyDown(key::leftShift));
        const std::array keys{PostedKey{.type = EventType::keyDown, .keyCode = key::home}};
        poster->postKeys(EventSourceState::hidSystem, keys);
        return EventVerdict::swallow;
    }));
    tap->enable();
    mac().slowCalls = 0;
    fake::sendKey({.type = 10, .keyCode = 36});
    EXPECT_EQ(front, "com.apple.finder");
    EXPECT_EQ(mac().posted.size(), 1U);
    EXPECT_EQ(mac().slowCalls, 0);
}

}  // namespace
}  // namespace orvel::macos
