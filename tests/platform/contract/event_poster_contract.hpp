#pragma once

#include "platform/base/key_codes.hpp"
#include "platform/event_poster.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <ostream>
#include <vector>

namespace orvel::contract {

/// One end of a keystroke that was posted, as it left. Modifier keys are left out: desktops differ
/// in how they put flags on a key.
struct Posted {
    bool isDown = false;
    std::int64_t key = 0;  ///< a key code, or the type of a media key
    bool isMedia = false;
    bool operator==(const Posted&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Posted& posted) {
    return out << (posted.isMedia ? "media " : "") << (posted.isDown ? '+' : '-') << posted.key;
}

/// What everyone who posts input does. `Harness`:
///     EventPoster& poster();
///     std::vector<Posted> posted(std::size_t count);    what left, once there is that much of it
///     EventFlags flagsOf(std::size_t index);            modifiers that were down for that one
///     void onAnotherThread(std::function<void()> work); returns when it is done
///     void type(KeyCode keyCode);                       a key of the hardware goes down and up
///     std::vector<std::int64_t> marks();   user data of each event that a tap saw, everything
///                                          having come to rest
template <typename Harness>
class EventPosterContract : public ::testing::Test {
protected:
    static constexpr auto kSource = EventSourceState::hidSystem;
    static constexpr std::array kStrokes{
        PostedKey{EventType::keyDown, key::c, flag::none},
        PostedKey{EventType::keyUp, key::c, flag::none},
        PostedKey{EventType::keyDown, key::returnKey, flag::none},
        PostedKey{EventType::keyUp, key::returnKey, flag::none},
    };

    Harness harness;
    EventPoster& poster = harness.poster();

    static std::vector<Posted> strokes() {
        return {{true, key::c}, {false, key::c}, {true, key::returnKey}, {false, key::returnKey}};
    }
    static PostedMediaKey mute(bool isDown) {
        constexpr std::int64_t type = 7;
        return {.data1 = type << 16 | (isDown ? 0xA : 0xB) << 8};
    }
};

TYPED_TEST_SUITE_P(EventPosterContract);

TYPED_TEST_P(EventPosterContract, PostsKeysInTheirOrder) {
    EXPECT_TRUE(this->poster.postKeys(this->kSource, this->kStrokes));
    EXPECT_EQ(this->harness.posted(4), this->strokes());
}

TYPED_TEST_P(EventPosterContract, PutsTheirFlagsOnKeys) {
    constexpr EventFlags flags = flag::command | flag::shift;
    const std::array keys{PostedKey{EventType::keyDown, key::s, flags},
                          PostedKey{EventType::keyUp, key::s, flags},
                          PostedKey{EventType::flagsChanged, key::leftCommand, flag::none}};
    EXPECT_TRUE(this->poster.postKeys(this->kSource, keys));
    ASSERT_FALSE(this->harness.posted(2).empty());
    EXPECT_EQ(this->harness.flagsOf(0), flags);
}

TYPED_TEST_P(EventPosterContract, PostsMediaKeys) {
    const std::array keys{this->mute(true), this->mute(false)};
    EXPECT_TRUE(this->poster.postMediaKeys(keys));
    EXPECT_THAT(this->harness.posted(2),
                ::testing::ElementsAre(Posted{true, 7, true}, Posted{false, 7, true}));
}

TYPED_TEST_P(EventPosterContract, PostsFromAnyThread) {
    this->harness.onAnotherThread(
        [this] { EXPECT_TRUE(this->poster.postKeys(this->kSource, this->kStrokes)); });
    EXPECT_EQ(this->harness.posted(4), this->strokes());
}

TYPED_TEST_P(EventPosterContract, TapsSeeWhatIsPostedMarkedOrNotAtAll) {
    EXPECT_TRUE(this->poster.postKeys(this->kSource, this->kStrokes));
    ASSERT_EQ(this->harness.posted(4).size(), 4U);
    EXPECT_THAT(this->harness.marks(), ::testing::Each(kSyntheticMarker));
    this->harness.type(key::a);
    const auto marks = this->harness.marks();
    EXPECT_EQ(std::count(marks.begin(), marks.end(), 0), 2) << "the hardware's own key";
}

REGISTER_TYPED_TEST_SUITE_P(EventPosterContract, PostsKeysInTheirOrder, PutsTheirFlagsOnKeys,
                            PostsMediaKeys, PostsFromAnyThread,
                            TapsSeeWhatIsPostedMarkedOrNotAtAll);

}  // namespace orvel::contract
