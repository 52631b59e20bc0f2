#include "platform/x11/posted_keys.hpp"

#include "tests/platform/x11/key_path_fixture.hpp"

#include <array>

namespace orvel::x11::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PostedKeysTest : public KeyPathTest {
protected:
    bool post(std::vector<PostedKey> keys) { return posted.post(std::span(std::as_const(keys))); }
    bool postMedia(std::int64_t keyType, std::int64_t keyState) {
        const std::array keys{PostedMediaKey{.data1 = keyType << 16 | keyState}};
        return posted.post(keys);
    }
    /// The three events of one posted keystroke.
    static std::vector<PostedKey> keystroke(KeyCode code, EventFlags modifier) {
        return {{EventType::keyDown, code, modifier},
                {EventType::keyUp, code, std::nullopt},
                {EventType::flagsChanged, key::leftCommand, flag::none}};
    }

    PostedKeys posted{map, state, ledger};
};

TEST_F(PostedKeysTest, AKeystrokeLeavesWithItsModifiersAndNothingStaysHeld) {
    EXPECT_TRUE(post(keystroke(key::c, flag::command)));
    EXPECT_THAT(taken(),
                ElementsAre(down(pc::leftControl), down(pc::c), up(pc::c), up(pc::leftControl)));
}

TEST_F(PostedKeysTest, AShortcutLeavesByTheNameThatTheApplicationHasForIt) {
    posted.setTranslator([](const MacShortcut& shortcut) -> std::optional<XShortcut> {
        EXPECT_EQ(shortcut.source, std::nullopt);
        return XShortcut{key::v, XModifiers(1U << indexOf(XModifier::shift))};
    });
    EXPECT_TRUE(post(keystroke(key::c, flag::command)));
    EXPECT_THAT(taken(),
                ElementsAre(down(pc::leftShift), down(pc::v), up(pc::v), up(pc::leftShift)));
}

TEST_F(PostedKeysTest, AKeystrokeSeesNoneOfTheHeldModifiersAndTheyAreHeldAgain) {
    press(pc::leftSuper);
    taken();
    EXPECT_TRUE(post(keystroke(key::v, flag::command)));
    EXPECT_THAT(taken(), ElementsAre(down(pc::blank), up(pc::blank), up(pc::leftSuper),
                                     down(pc::leftControl), down(pc::v), up(pc::v),
                                     up(pc::leftControl), down(pc::leftSuper)));
    release(pc::leftSuper);
    EXPECT_THAT(taken(), ElementsAre(down(pc::blank), up(pc::blank), up(pc::leftSuper)));
}

TEST_F(PostedKeysTest, APostedReleaseOfModifiersLeavesPhysicalOnesHeld) {
    press(pc::leftControl);
    taken();
    post({{EventType::flagsChanged, key::leftCommand, flag::none}});
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(PostedKeysTest, APostedModifierStaysUntilAPostedReleaseOfIt) {
    post({{EventType::flagsChanged, key::leftCommand, flag::command}});
    EXPECT_THAT(taken(), ElementsAre(down(pc::leftControl)));
    post({{EventType::flagsChanged, key::leftCommand, flag::none}});
    EXPECT_THAT(taken(), ElementsAre(down(pc::blank), up(pc::blank), up(pc::leftControl)));
}

TEST_F(PostedKeysTest, APostedReleaseKeepsPostedModifiersOfItsFlags) {
    post({{EventType::flagsChanged, key::leftCommand, flag::command},
          {EventType::flagsChanged, key::leftShift, flag::command | flag::shift}});
    taken();
    post({{EventType::flagsChanged, key::leftCommand, flag::shift}});
    EXPECT_FALSE(ledger.down()[pc::leftControl]);
    EXPECT_TRUE(ledger.down()[pc::leftShift]);
}

TEST_F(PostedKeysTest, AKeyThatIsHeldAlreadyIsStruckAnew) {
    press(pc::v);
    taken();
    post(keystroke(key::v, flag::none));
    EXPECT_THAT(taken(), ElementsAre(up(pc::v), down(pc::v)));
    release(pc::v);
    EXPECT_THAT(taken(), ElementsAre(up(pc::v)));
}

TEST_F(PostedKeysTest, ABatchWithAKeyThatTheKeyboardLacksPostsNothing) {
    EXPECT_FALSE(post(
        {{EventType::keyDown, key::a, flag::none}, {EventType::keyDown, key::f16, flag::none}}));
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(PostedKeysTest, AKeystrokeInsideTheReleaseOfALoneAltOpensNoMenu) {
    press(pc::leftAlt);
    path.setHandler([&](Event& event) {
        if (event.type == EventType::flagsChanged) {
            post(keystroke(key::s, flag::command));
        }
        return EventVerdict::pass;
    });
    release(pc::leftAlt);
    EXPECT_THAT(taken(),
                ElementsAre(down(pc::leftAlt), down(pc::blank), up(pc::blank), up(pc::leftAlt),
                            down(pc::leftControl), down(pc::s), up(pc::s), up(pc::leftControl)));
}

TEST_F(PostedKeysTest, MediaKeysLeaveAsTheKeysOfTheirSymbolsWithoutModifiers) {
    press(pc::leftShift);
    taken();
    EXPECT_TRUE(postMedia(7, 0xA00));
    EXPECT_TRUE(postMedia(7, 0xB00));
    EXPECT_THAT(taken(), ElementsAre(down(pc::blank), up(pc::blank), up(pc::leftShift),
                                     down(pc::mute), up(pc::mute), down(pc::leftShift)));
}

TEST_F(PostedKeysTest, AMediaKeyThatTheKeyboardLacksCannotBePosted) {
    EXPECT_FALSE(postMedia(2, 0xA00));
    EXPECT_FALSE(postMedia(99, 0xA00));
    EXPECT_THAT(taken(), IsEmpty());
}

}  // namespace
}  // namespace orvel::x11::test
