#include "engine/logical_flags.hpp"

#include "engine/finder_folder.hpp"
#include "tests/support/memory_fixture.hpp"

namespace orvel::test {
namespace {

class LogicalFlags : public MemoryFixture {
protected:
    Preferences preferences{desk.preferenceStore};

    void mapAll(const char* target) {
        for (const char* name : {"map_ctrl", "map_option", "map_cmd"})
            prefer(name, std::string(target));
    }
    [[nodiscard]] EventFlags translated(EventFlags flags) const {
        return translatedFlags(flags, preferences);
    }
};

TEST_F(LogicalFlags, AbsentMapsAreCommandWinAndAlt) {
    EXPECT_EQ(translated(flag::control), flag::command);
    EXPECT_EQ(translated(flag::option), flag::control);
    EXPECT_EQ(translated(flag::command), flag::option);
}

TEST_F(LogicalFlags, OtherFlagsStay) {
    constexpr EventFlags others = flag::shift | flag::capsLock | flag::secondaryFn | 0x101;
    EXPECT_EQ(translated(others), others);
    EXPECT_EQ(translated(others | flag::control), others | flag::command);
}

TEST_F(LogicalFlags, SeveralModifiersAreTranslatedTogether) {
    EXPECT_EQ(translated(flag::control | flag::option), flag::command | flag::control);
    mapAll("Cmd");
    EXPECT_EQ(translated(flag::control | flag::option | flag::command), flag::command);
}

TEST_F(LogicalFlags, TargetsThatAKeyCannotTakeLeaveItsOwnFlag) {
    mapAll("Ctrl");
    EXPECT_EQ(translated(flag::option | flag::command), flag::option | flag::command);
    mapAll("Win");
    EXPECT_EQ(translated(flag::control), flag::control);
    mapAll("an unknown text");
    EXPECT_EQ(translated(flag::control | flag::option), flag::control | flag::option);
}

TEST_F(LogicalFlags, ModifierKeysBecomeTheLeftKeyOfTheirTarget) {
    EXPECT_EQ(translatedModifierKey(key::rightControl, preferences), key::leftCommand);
    EXPECT_EQ(translatedModifierKey(key::rightOption, preferences), key::leftControl);
    EXPECT_EQ(translatedModifierKey(key::rightCommand, preferences), key::leftOption);
    EXPECT_EQ(translatedModifierKey(key::leftShift, preferences), key::leftShift);
}

TEST_F(LogicalFlags, ModifierKeysThatStayThemselvesKeepTheirSide) {
    mapAll("原按键");
    for (const KeyCode code : {key::rightControl, key::rightOption, key::rightCommand}) {
        EXPECT_EQ(translatedModifierKey(code, preferences), code);
    }
}

TEST(FinderFolder, ReadsNamesOutOfAFileAddress) {
    const FinderFolder folder = finderFolder("file://localhost/Users/a%20b/100%25\n");
    EXPECT_EQ(folder.path, "/Users/a b/100%");
    EXPECT_EQ(folder.labels, (std::vector<std::string>{"🏠", "Users", "a b", "100%"}));
}

TEST(FinderFolder, KeepsPercentSignsThatEncodeNothing) {
    EXPECT_EQ(finderFolder("file:///50%/%zz/%4").path, "/50%/%zz/%4");
}

TEST(FinderFolder, TakesAnythingElseForTheRoot) {
    for (const char* text : {"", "ERROR: no", "/Users", "http://x/"}) {
        EXPECT_EQ(finderFolder(text).path, "/") << text;
        EXPECT_EQ(finderFolder(text).labels.back(), "根目录") << text;
    }
}

}  // namespace
}  // namespace orvel::test
