#include "platform/x11/shortcut_dialect.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = ApplicationKind;

std::optional<XShortcut> translated(std::string_view shortcut, Kind kind,
                                    std::optional<KeyCode> source = std::nullopt) {
    auto parsed = parseMacShortcut(shortcut);
    EXPECT_TRUE(parsed) << shortcut;
    parsed->source = source;
    return ShortcutDialect().translate(*parsed, kind);
}

std::optional<XShortcut> x(std::string_view shortcut) {
    const auto parsed = parseXShortcut(shortcut);
    EXPECT_TRUE(parsed) << shortcut;
    return parsed;
}

TEST(ShortcutDialect, AFileManagerGetsItsOwnKeysBack) {
    EXPECT_EQ(translated("Command+O", Kind::fileManager, key::returnKey), x("Return"));
    EXPECT_EQ(translated("Return", Kind::fileManager, key::f2), x("F2"));
    EXPECT_EQ(translated("Command+Backspace", Kind::fileManager, key::forwardDelete), x("Delete"));
    EXPECT_EQ(translated("Command+C", Kind::fileManager, key::x), x("Ctrl+X"));
    EXPECT_EQ(translated("Command+C", Kind::fileManager, key::c), std::nullopt);
    EXPECT_EQ(translated("Command+Option+V", Kind::fileManager, key::v), x("Ctrl+V"));
}

TEST(ShortcutDialect, TheOpenShortcutItselfStaysOne) {
    EXPECT_EQ(translated("Command+O", Kind::fileManager, key::o), std::nullopt);
    EXPECT_EQ(translated("Command+O", Kind::editor, key::o), std::nullopt);
}

TEST(ShortcutDialect, SideButtonsGoBackAndForwardInEveryApplication) {
    for (const auto kind :
         {Kind::fileManager, Kind::browser, Kind::editor, Kind::terminal, Kind::other}) {
        EXPECT_EQ(translated("Command+[", kind), x("Alt+Left"));
        EXPECT_EQ(translated("Command+]", kind), x("Alt+Right"));
    }
}

TEST(ShortcutDialect, ABracketThatIsTypedInATerminalOrEditorIsNoWayBack) {
    EXPECT_EQ(translated("Command+[", Kind::terminal, key::leftBracket), std::nullopt);
    EXPECT_EQ(translated("Command+[", Kind::editor, key::leftBracket), std::nullopt);
    EXPECT_EQ(translated("Command+[", Kind::browser, key::leftBracket), x("Alt+Left"));
}

TEST(ShortcutDialect, InATerminalTheInterruptStaysOne) {
    EXPECT_EQ(translated("Command+C", Kind::terminal, key::c), std::nullopt);
    EXPECT_EQ(translated("Command+V", Kind::terminal, key::v), x("Ctrl+Shift+V"));
    EXPECT_EQ(translated("Command+V", Kind::terminal), x("Ctrl+Shift+V"));
}

TEST(ShortcutDialect, ClosingAWindowByAltF4IsLeftToTheWindowManager) {
    EXPECT_EQ(translated("Command+W", Kind::terminal, key::f4), x("Alt+F4"));
    EXPECT_EQ(translated("Command+W", Kind::browser, key::w), std::nullopt);
}

TEST(ShortcutDialect, StartAndEndOfLineAndText) {
    EXPECT_EQ(translated("Command+Left", Kind::editor), x("Home"));
    EXPECT_EQ(translated("Command+Shift+Right", Kind::editor), x("Shift+End"));
    EXPECT_EQ(translated("Command+Up", Kind::editor), x("Ctrl+Home"));
    EXPECT_EQ(translated("Command+Up", Kind::fileManager), x("Alt+Up"));
}

TEST(ShortcutDialect, ActsOfTheDesktop) {
    EXPECT_EQ(translated("Command+Tab", Kind::other), x("Alt+Tab"));
    EXPECT_EQ(translated("Command+Shift+Tab", Kind::other), x("Alt+Shift+Tab"));
    EXPECT_EQ(translated("Command+Space", Kind::other), x("Alt+F2"));
    EXPECT_EQ(translated("Command+Shift+/", Kind::editor), x("F10"));
    EXPECT_EQ(translated("Command+Shift+3", Kind::other), x("Print"));
}

TEST(ShortcutDialect, WhatIsCalledTheSameIsLeftAlone) {
    for (const auto* shortcut :
         {"Command+A", "Command+S", "Command+Shift+Z", "Option+F", "Left", "A"})
        EXPECT_EQ(translated(shortcut, Kind::editor), std::nullopt) << shortcut;
}

TEST(ShortcutDialect, FlagsOfTheKeyItselfDoNotMatter) {
    const MacShortcut shortcut{
        key::leftArrow, flag::command | flag::numericPad | flag::secondaryFn, {}};
    EXPECT_EQ(ShortcutDialect().translate(shortcut, Kind::editor), x("Home"));
}

TEST(ShortcutDialect, TheUsersTableWins) {
    std::vector<std::string> errors;
    const ShortcutDialect dialect(
        parsePlatformTable("p.conf",
                           "[shortcuts]\nfile-manager Command+Up = Ctrl+Up\nany Command+J = F9\n"),
        errors);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(dialect.translate(*parseMacShortcut("Command+Up"), Kind::fileManager), x("Ctrl+Up"));
    EXPECT_EQ(dialect.translate(*parseMacShortcut("Command+Up"), Kind::editor), x("Ctrl+Home"));
    EXPECT_EQ(dialect.translate(*parseMacShortcut("Command+J"), Kind::terminal), x("F9"));
}

TEST(ShortcutDialect, AWrongLineIsNamedAndLeftOut) {
    std::vector<std::string> errors;
    const ShortcutDialect dialect(
        parsePlatformTable("p.conf",
                           "[shortcuts]\nfinder Command+A = F1\nany Command+Nonsense = F1\n"
                           "any Command+A = Meta+F1\nany = F1\n"),
        errors);
    EXPECT_THAT(errors,
                ElementsAre("p.conf:2: no kind of application is called 'finder' (file-manager, "
                            "terminal, browser, editor, other, any)",
                            "p.conf:3: 'any Command+Nonsense' holds no shortcut such as any "
                            "Command+Up",
                            "p.conf:4: 'Meta+F1' holds no shortcut such as Ctrl+Page_Up",
                            "p.conf:5: 'any' holds no shortcut such as any Command+Up"));
    EXPECT_EQ(dialect.translate(*parseMacShortcut("Command+A"), Kind::other), std::nullopt);
}

}  // namespace
}  // namespace orvel::x11
