#include "platform/accessibility_permission.hpp"
#include "platform/caps_lock.hpp"
#include "platform/event_poster.hpp"
#include "platform/input_sources.hpp"
#include "platform/input_state.hpp"
#include "platform/macos/mac_factories.hpp"
#include "tests/macos/run/mac_test.hpp"

#include <array>

namespace orvel::macos {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacEventPosterTest : public MacTest {
protected:
    std::unique_ptr<EventPoster> poster = makeEventPoster();
};

TEST_F(MacEventPosterTest, PostsKeysInOrderWhereHardwareEventsEnter) {
    const std::array keys{PostedKey{.type = EventType::keyDown, .keyCode = 8, .flags = 0x100000},
                          PostedKey{.type = EventType::keyUp, .keyCode = 8},
                          PostedKey{.type = EventType::flagsChanged, .keyCode = 55, .flags = 0}};
    mac().hidFlags = 0x800000;
    EXPECT_TRUE(poster->postKeys(EventSourceState::hidSystem, keys));
    EXPECT_THAT(
        mac().posted,
        ElementsAre(fake::PostedEvent{.type = 10, .keyCode = 8, .flags = 0x100000, .userData = 42},
                    // A release without flags of its own keeps those of its source.
                    fake::PostedEvent{.type = 11, .keyCode = 8, .flags = 0x800000, .userData = 42},
                    fake::PostedEvent{.type = 12, .keyCode = 55, .userData = 42}));
}

TEST_F(MacEventPosterTest, PostsNothingWhenAnEventCannotBeCreated) {
    mac().eventsCanBeCreated = false;
    const std::array keys{PostedKey{.keyCode = 8}};
    EXPECT_FALSE(poster->postKeys(EventSourceState::combinedSession, keys));
    const std::array media{PostedMediaKey{}};
    EXPECT_FALSE(poster->postMediaKeys(media));
    EXPECT_THAT(mac().posted, IsEmpty());
}

TEST_F(MacEventPosterTest, AMediaKeyIsASystemDefinedEventWithItsData) {
    constexpr std::int64_t kPlay = 16;
    const std::array keys{PostedMediaKey{.flags = 0xA00, .data1 = (kPlay << 16) | 0xA00},
                          PostedMediaKey{.flags = 0xB00, .data1 = (kPlay << 16) | 0xB00}};
    EXPECT_TRUE(poster->postMediaKeys(keys));
    EXPECT_THAT(mac().posted, ElementsAre(fake::PostedEvent{.type = 14,
                                                            .flags = 0xA00,
                                                            .userData = 42,
                                                            .subtype = 8,
                                                            .data1 = 0x100A00,
                                                            .data2 = -1},
                                          fake::PostedEvent{.type = 14,
                                                            .flags = 0xB00,
                                                            .userData = 42,
                                                            .subtype = 8,
                                                            .data1 = 0x100B00,
                                                            .data2 = -1}));
}

TEST_F(MacEventPosterTest, PostsNothingThatWouldWakeASleepingMachine) {
    mac().session.isDisplayAsleep = true;
    const std::array keys{PostedKey{.type = EventType::keyUp, .keyCode = 8}};
    EXPECT_FALSE(poster->postKeys(EventSourceState::hidSystem, keys));
    EXPECT_THAT(mac().posted, IsEmpty());
}

using MacInputStateTest = MacTest;

TEST_F(MacInputStateTest, TellsWhatTheHardwareHolds) {
    const auto input = makeInputState();
    mac().hidFlags = 0x10000;
    mac().keysDown = {63};
    EXPECT_EQ(input->hidFlags(), flag::capsLock);
    EXPECT_TRUE(input->isKeyDown(key::fn));
    EXPECT_FALSE(input->isKeyDown(key::a));
}

TEST_F(MacInputStateTest, CountsThePointerFromTheBottomLeft) {
    mac().pointerX = 12;
    mac().pointerY = 880;
    EXPECT_EQ(makeInputState()->pointerLocation(), (ScreenPoint{12, 880}));
}

class MacInputSourcesTest : public MacTest {
protected:
    MacInputSourcesTest() {
        mac().inputSources = {{.id = "layout.ABC", .isAscii = true},
                              {.id = "method.Pinyin", .isAscii = false},
                              {.id = "palette.Emoji", .category = "TISCategoryPaletteInputSource"},
                              {.id = "method.Pinyin.mode", .isSelectable = false}};
        mac().currentInputSource = "method.Pinyin";
    }
    std::unique_ptr<InputSources> sources = makeInputSources();
};

TEST_F(MacInputSourcesTest, DescribesTheCurrentSource) {
    const auto current = sources->current();
    ASSERT_TRUE(current);
    EXPECT_EQ(current->id, "method.Pinyin");
    EXPECT_TRUE(current->isKeyboard);
    EXPECT_EQ(current->isAsciiCapable, false);
}

TEST_F(MacInputSourcesTest, HasNoCurrentSourceWhereNoneCanBeRead) {
    mac().currentInputSource = "";
    EXPECT_FALSE(sources->current());
}

TEST_F(MacInputSourcesTest, ListsWhatCanBeSelectedInTheSystemsOrder) {
    std::vector<std::pair<std::string, bool>> listed;
    for (const InputSource& source : sources->selectable()) {
        listed.emplace_back(source.id, source.isKeyboard);
    }
    EXPECT_THAT(listed, ElementsAre(std::pair("layout.ABC", true), std::pair("method.Pinyin", true),
                                    std::pair("palette.Emoji", false)));
    EXPECT_EQ(sources->selectable().back().isAsciiCapable, std::nullopt);
}

TEST_F(MacInputSourcesTest, SelectsASourceByItsName) {
    sources->select("layout.ABC");
    EXPECT_EQ(mac().currentInputSource, "layout.ABC");
    sources->select("nothing.there");
    EXPECT_EQ(mac().currentInputSource, "layout.ABC");
}

using MacCapsLockTest = MacTest;

TEST_F(MacCapsLockTest, SetsTheLockAndClosesItsConnection) {
    const auto capsLock = makeCapsLock();
    EXPECT_EQ(capsLock->set(true), CapsLockOutcome::done);
    EXPECT_EQ(mac().capsLock, true);
    EXPECT_EQ(capsLock->set(false), CapsLockOutcome::done);
    EXPECT_EQ(mac().capsLock, false);
    EXPECT_EQ(mac().openHidConnections, 0);
}

TEST_F(MacCapsLockTest, SaysWhatIsMissing) {
    const auto capsLock = makeCapsLock();
    mac().hidServiceOpens = false;
    EXPECT_EQ(capsLock->set(true), CapsLockOutcome::notOpened);
    mac().hasHidService = false;
    EXPECT_EQ(capsLock->set(true), CapsLockOutcome::noService);
    EXPECT_EQ(mac().capsLock, std::nullopt);
}

using MacAccessibilityPermissionTest = MacTest;

TEST_F(MacAccessibilityPermissionTest, PromptsOnlyWhenAskedToAndNeeded) {
    const auto permission = makeAccessibilityPermission();
    EXPECT_TRUE(permission->isTrusted());
    EXPECT_TRUE(permission->isTrustedOrPrompt());
    EXPECT_EQ(mac().trustPrompts, 0);
    mac().session.isTrusted = false;
    EXPECT_FALSE(permission->isTrusted());
    EXPECT_EQ(mac().trustPrompts, 0);
    EXPECT_FALSE(permission->isTrustedOrPrompt());
    EXPECT_EQ(mac().trustPrompts, 1);
}

}  // namespace
}  // namespace orvel::macos
