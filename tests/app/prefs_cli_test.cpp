#include "app/preference_keys.hpp"
#include "tests/support/program_run.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

// The real program, in a home folder of its own.

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr std::string_view kFile = ".config/orvel/preferences.plist";

class PrefsCli : public ::testing::Test {
protected:
    ScratchHome home;

    ProgramRun prefs(std::vector<std::string> words, std::string_view input = {}) {
        words.insert(words.begin(), {builtProgram("orvel"), "prefs"});
        return runProgram(words, input);
    }
    /// What a command prints that must succeed without a word on standard error.
    std::string printed(std::vector<std::string> words) {
        const ProgramRun run = prefs(std::move(words));
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_THAT(run.err, IsEmpty());
        return run.out;
    }
    void set(const std::string& key, const std::string& value) {
        EXPECT_EQ(printed({"set", key, value}), "");
    }
    /// The one line that a refused command says.
    std::string refusal(std::vector<std::string> words, int status = 2) {
        const ProgramRun run = prefs(std::move(words));
        EXPECT_EQ(run.status, status);
        EXPECT_THAT(run.out, IsEmpty());
        EXPECT_THAT(run.err, MatchesRegex("orvel: [^\n]*\n"));
        return run.err;
    }
    static std::vector<std::string> linesOf(const std::string& text) {
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }
};

TEST_F(PrefsCli, AFreshInstallationShowsTheDefaultsAsAbsent) {
    const auto lines = linesOf(printed({"list"}));
    EXPECT_THAT(lines, SizeIs(kPreferenceCount));
    for (const char* pattern :
         {"card_modifier +false \\(absent\\)", "card_fkeys +true \\(absent\\)",
          "cardMouseSide +true \\(absent\\)", "cardAltMenu +true \\(absent\\)",
          "card_drag_drop +true \\(absent\\)", "map_ctrl +原按键 \\(absent\\)",
          "delete_strategy +组合键 \\(absent\\)", "delete_combo_mod +Shift \\(absent\\)",
          "delete_single_key +F12 \\(absent\\)", "launch_at_login +false \\(absent\\)",
          "NSInitialToolTipDelay +\\(absent\\)", "orvel_pinned_apps +\\(absent\\)"}) {
        EXPECT_THAT(lines, Contains(MatchesRegex(pattern)));
    }
    EXPECT_EQ(printed({"get", "card_fkeys"}), "true (absent)\n");
    EXPECT_EQ(printed({"get", "card_snap"}), "false (absent)\n");
    EXPECT_FALSE(home.has(".config")) << "reading makes nothing";
}

TEST_F(PrefsCli, WhatIsSetIsReadBack) {
    const std::pair<const char*, const char*> settings[] = {
        {"card_snap", "true"},
        {"card_fkeys", "false"},
        {"map_option", "Win"},
        {"map_cmd", "原按键"},
        {"delete_strategy", "牺牲单键"},
        {"delete_single_key", "` (波浪号)"},
        {"NSInitialToolTipDelay", "150"},
        {"orvel_pinned_apps", "[\"com.apple.finder\",\"b c\"]"},
        {"orvel_clipboard_history_v2", "W10="}};
    for (const auto& [key, value] : settings) set(key, value);
    for (const auto& [key, value] : settings) {
        EXPECT_EQ(printed({"get", key}), std::string(value) + "\n") << key;
    }
    EXPECT_EQ(home.mode(kFile), 0600U);
}

TEST_F(PrefsCli, AValueIsStoredWithItsType) {
    set("card_snap", "on");
    set("map_ctrl", "Cmd");
    set("NSInitialToolTipDelay", "-5");
    EXPECT_THAT(home.read(kFile), AllOf(HasSubstr("<key>card_snap</key>\n\t<true/>"),
                                        HasSubstr("<key>map_ctrl</key>\n\t<string>Cmd</string>"),
                                        HasSubstr("<integer>-5</integer>")));
}

TEST_F(PrefsCli, AListIsOneArrayOrManyWords) {
    EXPECT_EQ(printed({"set", "orvel_pinned_apps", "a", "-b", "c d"}), "");
    EXPECT_EQ(printed({"get", "orvel_pinned_apps"}), "[\"a\",\"-b\",\"c d\"]\n");
    set("orvel_pinned_apps", "[]");
    EXPECT_EQ(printed({"get", "orvel_pinned_apps"}), "[]\n");
}

TEST_F(PrefsCli, UnsetBringsTheDefaultBackAndMayBeRepeated) {
    set("map_ctrl", "Cmd");
    EXPECT_EQ(printed({"unset", "map_ctrl"}), "");
    EXPECT_EQ(printed({"unset", "map_ctrl"}), "");
    EXPECT_EQ(printed({"get", "map_ctrl"}), "原按键 (absent)\n");
}

TEST_F(PrefsCli, AnUnknownKeyIsRefusedWithTheNearestName) {
    EXPECT_EQ(refusal({"get", "card_snp"}),
              "orvel: unknown key 'card_snp'; the nearest is 'card_snap'\n");
    EXPECT_THAT(refusal({"set", "card_mouse_side", "true"}), HasSubstr("'cardMouseSide'"));
    EXPECT_THAT(refusal({"set", "CARD_FN", "true"}), HasSubstr("'card_fn'"));
    EXPECT_THAT(refusal({"unset", "map_ctl"}), HasSubstr("'map_ctrl'"));
    EXPECT_FALSE(home.has(kFile));
}

TEST_F(PrefsCli, SettingNothingIsRefusedWithTheWayToHelp) {
    const ProgramRun run = prefs({"set", "card_snap"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err,
              "orvel prefs set: KEY and VALUE are required\n"
              "Run 'orvel prefs set --help' for more information.\n");
}

TEST_F(PrefsCli, AValueOfAnotherTypeIsRefused) {
    EXPECT_THAT(refusal({"set", "card_snap", "maybe"}), StartsWith("orvel: card_snap: 'maybe'"));
    EXPECT_THAT(refusal({"set", "card_snap", ""}), HasSubstr("''"));
    EXPECT_THAT(refusal({"set", "card_snap", "true", "false"}), HasSubstr("one value"));
    EXPECT_THAT(refusal({"set", "NSInitialToolTipDelay", "1.5"}), HasSubstr("'1.5'"));
    EXPECT_THAT(refusal({"set", "NSInitialToolTipDelay", "99999999999999999999"}),
                HasSubstr("64 bits"));
    EXPECT_THAT(refusal({"set", "orvel_pinned_apps", "[1]"}), HasSubstr("'[1]'"));
    EXPECT_THAT(refusal({"set", "orvel_clipboard_history_v2", "!"}), HasSubstr("base64"));
    EXPECT_FALSE(home.has(kFile));
}

TEST_F(PrefsCli, AnUnknownTextOfAnEnumerationIsRefusedWithTheKnownOnes) {
    EXPECT_EQ(refusal({"set", "map_ctrl", "cmd"}),
              "orvel: map_ctrl: 'cmd' is none of: Ctrl, Win, Alt, Cmd, 原按键\n");
    EXPECT_THAT(refusal({"set", "delete_combo_mod", "Win"}),
                HasSubstr("Shift, Fn, Ctrl, Option, Cmd"));
    EXPECT_THAT(refusal({"set", "delete_strategy", "Shift"}), HasSubstr("组合键, 牺牲单键"));
    EXPECT_THAT(refusal({"set", "delete_single_key", "F9"}), HasSubstr("F12, F11, F10"));
}

TEST_F(PrefsCli, ValuesOfAnotherTypeShowAsTheyRead) {
    home.write(kFile,
               "<plist><dict><key>card_snap</key><string>YES</string><key>card_tab</"
               "key><integer>0</integer>"
               "<key>card_fkeys</key><array/><key>map_ctrl</key><integer>7</integer>"
               "<key>map_cmd</key><string>Hyper</string><key>orvel_pinned_apps</key><true/></"
               "dict></plist>");
    EXPECT_EQ(printed({"get", "card_snap"}), "true (stored as string)\n");
    EXPECT_EQ(printed({"get", "card_tab"}), "false (stored as integer)\n");
    EXPECT_EQ(printed({"get", "card_fkeys"}), "false (stored as list)\n");
    EXPECT_EQ(printed({"get", "map_ctrl"}), "7 (stored as integer)\n");
    EXPECT_EQ(printed({"get", "map_cmd"}), "Hyper (not a known value)\n");
    EXPECT_EQ(printed({"get", "orvel_pinned_apps"}), "(stored as boolean)\n");
}

TEST_F(PrefsCli, TheClipboardHistoryIsNotSpreadOverTheList) {
    set("orvel_clipboard_history_v2", "c2VjcmV0");
    EXPECT_THAT(printed({"list"}), AllOf(HasSubstr("(6 bytes)"), Not(HasSubstr("c2VjcmV0"))));
}

TEST_F(PrefsCli, WhatIsExportedIsImportedElsewhere) {
    set("card_snap", "true");
    set("map_ctrl", "Cmd");
    set("orvel_pinned_apps", "[\"a\"]");
    EXPECT_EQ(printed({"export", home.at("backup.plist")}), "");
    EXPECT_EQ(home.mode("backup.plist"), 0600U);
    const std::string before = printed({"list"});
    fs::remove_all(home.at(".config"));
    EXPECT_EQ(printed({"import", home.at("backup.plist")}), "");
    EXPECT_EQ(printed({"list"}), before);
}

TEST_F(PrefsCli, ExportAndImportGoThroughPipes) {
    set("card_snap", "true");
    const std::string list = printed({"export", "-"});
    printed({"unset", "card_snap"});
    const ProgramRun imported = prefs({"import", "-"}, list);
    EXPECT_EQ(imported.status, 0) << imported.err;
    EXPECT_EQ(printed({"get", "card_snap"}), "true\n");
}

TEST_F(PrefsCli, AnExportWithTheClipboardHistorySaysSo) {
    set("orvel_clipboard_history_v2", "W10=");
    EXPECT_THAT(prefs({"export", home.at("backup.plist")}).err, HasSubstr("clipboard history"));
}

TEST_F(PrefsCli, AnImportKeepsWhatItDoesNotName) {
    set("card_snap", "true");
    home.write("some.plist", "<plist><dict><key>card_tab</key><true/></dict></plist>");
    EXPECT_EQ(printed({"import", home.at("some.plist")}), "");
    EXPECT_EQ(printed({"get", "card_snap"}), "true\n");
    EXPECT_EQ(printed({"get", "card_tab"}), "true\n");
}

TEST_F(PrefsCli, AnImportWithOneMistakeChangesNothingAndNamesEveryMistake) {
    home.write("bad.plist",
               "<plist><dict><key>card_tab</key><true/><key>card_snp</key><true/>"
               "<key>card_fn</key><string>yes</string><key>map_ctrl</key><string>Foo</string></"
               "dict></plist>");
    const ProgramRun run = prefs({"import", home.at("bad.plist")});
    EXPECT_EQ(run.status, 2);
    const auto lines = linesOf(run.err);
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(lines[0], "orvel: " + home.at("bad.plist") +
                            ": unknown key 'card_snp'; the nearest is 'card_snap'");
    EXPECT_EQ(lines[1], "orvel: " + home.at("bad.plist") + ": card_fn: 'yes' is no boolean");
    EXPECT_THAT(lines[2], HasSubstr("map_ctrl: 'Foo' is none of"));
    EXPECT_FALSE(home.has(kFile));
}

TEST_F(PrefsCli, UnknownKeysOfAnImportArePassedOverWhenAskedTo) {
    home.write("domain.plist",
               "<plist><dict><key>NSNavLastRootDirectory</key><string>~</string>"
               "<key>card_tab</key><true/></dict></plist>");
    EXPECT_EQ(prefs({"import", home.at("domain.plist")}).status, 2);
    EXPECT_EQ(printed({"import", "--skip-unknown", home.at("domain.plist")}), "");
    EXPECT_EQ(printed({"get", "card_tab"}), "true\n");
    EXPECT_THAT(home.read(kFile), Not(HasSubstr("NSNav")));
}

TEST_F(PrefsCli, AFileThatIsNoPropertyListIsRefusedByName) {
    home.write("junk", "hello");
    EXPECT_THAT(refusal({"import", home.at("junk")}),
                StartsWith("orvel: " + home.at("junk") + ": "));
    EXPECT_THAT(refusal({"import", home.at("absent")}, 1), HasSubstr(home.at("absent")));
    EXPECT_THAT(refusal({"export", home.at("absent/file")}, 1), HasSubstr(home.at("absent/file")));
}

TEST_F(PrefsCli, DamagedSettingsAreKeptAsideWithOneLine) {
    home.write(kFile, "oops");
    const ProgramRun run = prefs({"get", "card_snap"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "false (absent)\n");
    EXPECT_THAT(run.err, AllOf(HasSubstr(home.at(kFile)), HasSubstr("preferences.plist.damaged-1"),
                               MatchesRegex("orvel: [^\n]*\n")));
    EXPECT_EQ(home.read(".config/orvel/preferences.plist.damaged-1"), "oops");
    EXPECT_EQ(printed({"get", "card_snap"}), "false (absent)\n");
}

TEST_F(PrefsCli, SettingsThatCannotBeReadOrWrittenEndWithStatusOne) {
    fs::create_directories(home.at(kFile));
    EXPECT_THAT(refusal({"list"}, 1), HasSubstr("is a folder"));
    EXPECT_THAT(refusal({"get", "card_snap"}, 1), HasSubstr("is a folder"));
    EXPECT_THAT(refusal({"export", "-"}, 1), HasSubstr("is a folder"));
    EXPECT_THAT(refusal({"set", "card_snap", "true"}, 1), HasSubstr("nothing is changed"));
}

TEST_F(PrefsCli, KeysOfOthersStayThroughEveryCommand) {
    const std::string theirs = "<key>theirs</key><dict><key>x</key><real>0.1</real></dict>";
    home.write(kFile, "<plist><dict>" + theirs + "</dict></plist>");
    set("card_snap", "true");
    printed({"unset", "card_snap"});
    EXPECT_THAT(home.read(kFile), HasSubstr(theirs));
    EXPECT_THAT(printed({"list"}), Not(HasSubstr("theirs")));
}

TEST_F(PrefsCli, ALinkIntoDotfilesStaysALink) {
    home.write("dots/orvel.plist", "<plist><dict><!-- mine --></dict></plist>");
    fs::create_directories(home.at(".config/orvel"));
    fs::create_symlink("../../dots/orvel.plist", home.at(kFile));
    set("card_snap", "true");
    EXPECT_TRUE(fs::is_symlink(home.at(kFile)));
    EXPECT_THAT(home.read("dots/orvel.plist"),
                AllOf(HasSubstr("<!-- mine -->"), HasSubstr("card_snap")));
}

TEST_F(PrefsCli, WrongUseIsExplainedAndHasStatusTwo) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{},
                                               {"frob"},
                                               {"get"},
                                               {"get", "a", "b"},
                                               {"set", "card_snap"},
                                               {"list", "--frob"},
                                               {"import"}}) {
        const ProgramRun run = prefs(words);
        EXPECT_EQ(run.status, 2) << ::testing::PrintToString(words);
        EXPECT_THAT(run.err, StartsWith("orvel prefs")) << ::testing::PrintToString(words);
        EXPECT_THAT(run.out, IsEmpty());
    }
    EXPECT_THAT(prefs({"frob"}).err, HasSubstr("'frob'"));
    EXPECT_THAT(prefs({"list", "--frob"}).err, HasSubstr("--frob"));
    EXPECT_THAT(prefs({"get"}).err, HasSubstr("KEY"));
}

}  // namespace
}  // namespace orvel::test
