#include "platform/x11/script_text.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orvel::x11 {
namespace {

using script::PowerAction;
using testing::HasSubstr;

ScriptAction parsed(std::string_view source) {
    auto action = parseScript(source);
    EXPECT_TRUE(action) << source << "\n" << action.error();
    return action ? std::move(action).value() : ScriptAction{script::EmptyTrash{}};
}

std::string errorOf(std::string_view source) {
    const auto action = parseScript(source);
    EXPECT_FALSE(action) << source;
    return action ? std::string() : action.error();
}

ScriptAction action(auto made) { return made; }

std::string systemEvents(const std::string& statement) {
    return "tell application \"System Events\" to " + statement;
}

std::string raise(const std::string& title) {
    return "tell application \"System Events\"\n"
           "    tell (first process whose unix id is 812)\n"
           "        try\n"
           "            perform action \"AXRaise\" of (first window whose name is \"" +
           title +
           "\")\n"
           "        end try\n"
           "    end tell\n"
           "end tell";
}

std::string makeFolder(const std::string& path) {
    return "tell application \"Finder\" to make new folder at POSIX file \"" + path + "\"";
}

TEST(ParseScript, PowerStatements) {
    EXPECT_EQ(parsed(systemEvents("log out")), action(script::Power{PowerAction::logOut}));
    EXPECT_EQ(parsed(systemEvents("sleep")), action(script::Power{PowerAction::sleep}));
    EXPECT_EQ(parsed(systemEvents("restart")), action(script::Power{PowerAction::restart}));
    EXPECT_EQ(parsed(systemEvents("shut down")), action(script::Power{PowerAction::shutDown}));
}

TEST(ParseScript, ChordsThatStandForAnActOfTheSession) {
    EXPECT_EQ(parsed(systemEvents("keystroke \"q\" using {command down, control down}")),
              action(script::Power{PowerAction::lock}));
    EXPECT_EQ(parsed(systemEvents("key code 103")), action(script::ShowDesktop{}));
    EXPECT_EQ(parsed(systemEvents("key code 53 using {command down, option down}")),
              action(script::ShowForceQuitDialog{}));
}

TEST(ParseScript, TheOrderOfModifiersDoesNotMatter) {
    EXPECT_EQ(parsed(systemEvents("keystroke \"q\" using {control down, command down}")),
              action(script::Power{PowerAction::lock}));
}

TEST(ParseScript, OtherChordsAreNotUnderstood) {
    for (const auto* statement :
         {"key code 12", "key code 103 using command down", "key code 53 using {command down}",
          "keystroke \"w\" using {command down, control down}",
          "keystroke \"q\" using command down"})
        EXPECT_THAT(errorOf(systemEvents(statement)), HasSubstr(statement));
}

TEST(ParseScript, TheDockByItsPreferencesAndByTheShellTexts) {
    EXPECT_EQ(parsed(systemEvents("set autohide of dock preferences to false")),
              action(script::SetDockHidden{false}));
    EXPECT_EQ(parsed(systemEvents("set autohide of dock preferences to true")),
              action(script::SetDockHidden{true}));
    EXPECT_EQ(
        parsed("do shell script \"defaults write com.apple.dock autohide -bool true; defaults "
               "write com.apple.dock autohide-delay -float 1000; killall Dock\""),
        action(script::SetDockHidden{true}));
    EXPECT_EQ(parsed("do shell script \"defaults write com.apple.dock autohide -bool false; "
                     "defaults delete com.apple.dock autohide-delay 2>/dev/null || true; killall "
                     "Dock\""),
              action(script::SetDockHidden{false}));
}

TEST(ParseScript, NoOtherShellTextEverRuns) {
    EXPECT_THAT(errorOf("do shell script \"rm -rf ~\""),
                HasSubstr("does not understand “do shell script \"rm -rf ~\"”"));
}

TEST(ParseScript, FileManagerStatements) {
    EXPECT_EQ(parsed("tell application \"Finder\" to get version"),
              action(script::FileManagerVersion{}));
    EXPECT_EQ(parsed("tell application \"Finder\" to empty trash"), action(script::EmptyTrash{}));
    EXPECT_EQ(parsed(makeFolder("/home/me/a b")), action(script::MakeFolder{"/home/me/a b"}));
    EXPECT_EQ(parsed("tell application \"Finder\"\n    set target of front window to POSIX file "
                     "\"/home/me\"\nend tell"),
              action(script::SetFrontFolder{"/home/me"}));
}

TEST(ParseScript, TheQueryForTheFrontFolder) {
    const std::string query =
        "tell application \"Finder\"\n"
        "try\n"
        "if exists Finder window 1 then\n"
        "return URL of (target of Finder window 1)\n"
        "else\n"
        "return URL of desktop\n"
        "end if\n"
        "on error errMsg\n"
        "return \"ERROR: \" & errMsg\n"
        "end try\n"
        "end tell";
    EXPECT_EQ(parsed(query), action(script::FrontFolder{"ERROR: "}));
    EXPECT_EQ(parsed("  " + query + "\n\n"), action(script::FrontFolder{"ERROR: "}));
}

TEST(ParseScript, RaisingAWindowByProcessAndTitle) {
    EXPECT_EQ(parsed(raise("Notes")), action(script::RaiseWindow{812, "Notes"}));
    EXPECT_EQ(parsed(raise("")), action(script::RaiseWindow{812, ""}));
    EXPECT_EQ(parsed(raise("$(reboot) `id` 'x' -rf ; | 文件")),
              action(script::RaiseWindow{812, "$(reboot) `id` 'x' -rf ; | 文件"}));
}

TEST(ParseScript, AnApplicationWithoutAProcessOfItsOwnIsNamedByANegativeNumber) {
    auto source = raise("Notes");
    source.replace(source.find("812"), 3, "-4711");
    EXPECT_EQ(parsed(source), action(script::RaiseWindow{-4711, "Notes"}));
}

TEST(ParseScript, EscapesInTextsAreResolved) {
    EXPECT_EQ(parsed(raise(R"(say \"hi\" \\ there)")),
              action(script::RaiseWindow{812, R"(say "hi" \ there)"}));
    EXPECT_THAT(errorOf(raise(R"(C:\windows)")), HasSubstr("syntax error"));
}

TEST(ParseScript, ANameNeverBecomesAStatement) {
    for (const auto* name :
         {"a\")\nend try\nend tell\nshut down\ntell (first process whose unix id is 1)\ntry\n"
          "perform action \"AXRaise\" of (first window whose name is \"b",
          "a\")\nend try\nend tell\nend tell\ntell application \"System Events\" to shut "
          "down\n--\"",
          "\" & (do shell script \"reboot\") & \""})
        errorOf(raise(name));
    errorOf(makeFolder("/tmp\"\ntell application \"Finder\" to empty trash\n\""));
    errorOf(makeFolder("/tmp\" & (do shell script \"id\") & \""));
}

TEST(ParseScript, AnErrorNamesTheApplicationAndTheStatement) {
    EXPECT_EQ(errorOf("tell application \"Mail\" to send everything now"),
              "execution error: Mail got an error: it does not understand “send everything now”. "
              "(-1708)");
    EXPECT_EQ(
        errorOf("tell application \"Finder\"\n  delete home\n  empty trash\nend tell"),
        "execution error: Finder got an error: it does not understand “delete home”. (-1708)");
    EXPECT_EQ(errorOf("beep 3"),
              "execution error: the script got an error: it does not understand “beep 3”. (-1708)");
}

TEST(ParseScript, BrokenTextsAreSyntaxErrors) {
    EXPECT_THAT(errorOf(""), HasSubstr("syntax error"));
    EXPECT_THAT(errorOf(" \n\n "), HasSubstr("syntax error"));
    EXPECT_THAT(errorOf("tell application \"Finder"), HasSubstr("end of script"));
    EXPECT_THAT(errorOf("tell application “Finder” to get version"), HasSubstr("unknown token"));
}

TEST(ParseScript, ABlockHoldsOneStatement) {
    errorOf("tell application \"System Events\"\nsleep\nrestart\nend tell");
    errorOf("tell application \"System Events\"\nend tell");
    EXPECT_EQ(parsed("tell application \"System Events\"\n\nsleep\n\nend tell\n"),
              action(script::Power{PowerAction::sleep}));
}

TEST(ParseScript, NumbersOutOfRangeAreNoNumbers) {
    errorOf(systemEvents("key code 99999999999999999999999"));
}

}  // namespace
}  // namespace orvel::x11
