#include "tests/support/program_run.hpp"
#include "tests/support/scratch_home.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace orvel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

class FrontDoor : public ::testing::Test {
protected:
    ScratchHome home;

    static ProgramRun orvel(std::vector<std::string> words, std::string_view input = {}) {
        words.insert(words.begin(), builtProgram("orvel"));
        return runProgram(words, input);
    }
    /// A copy of the program, as an installation has it.
    ProgramRun installed(std::vector<std::string> words) {
        fs::create_directories(home.at("usr/bin"));
        fs::copy_file(builtProgram("orvel"), home.at("usr/bin/orvel"),
                      fs::copy_options::skip_existing);
        words.insert(words.begin(), home.at("usr/bin/orvel"));
        return runProgram(words);
    }
    /// A session program that tells how it was called.
    void installSession(std::string_view path, std::string_view name) {
        home.write(path,
                   "#!/bin/sh\necho " + std::string(name) + "\nprintf '[%s]' \"$@\"\nexit 7\n");
        fs::permissions(home.at(path), fs::perms(0755));
    }
};

TEST_F(FrontDoor, TellsItsVersionAndItsCommands) {
    const ProgramRun version = orvel({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.out, MatchesRegex("orvel [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    const ProgramRun help = orvel({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* command : {"run", "replay", "record", "prefs", "doctor", "panel", "rules"}) {
        EXPECT_THAT(help.out, HasSubstr("  " + std::string(command) + " "));
    }
    EXPECT_THAT(help.err, IsEmpty());
}

TEST_F(FrontDoor, RefusesWhatItDoesNotKnow) {
    const ProgramRun command = orvel({"frobnicate"});
    EXPECT_EQ(command.status, 2);
    EXPECT_THAT(command.err, StartsWith("orvel: unknown command 'frobnicate'\n"));
    const ProgramRun option = orvel({"--frob"});
    EXPECT_EQ(option.status, 2);
    EXPECT_THAT(option.err, HasSubstr("'--frob'"));
    EXPECT_THAT(option.out, IsEmpty());
}

TEST_F(FrontDoor, NeedsNeitherXNorQt) {
    const ProgramRun libraries = runProgram({"/usr/bin/ldd", builtProgram("orvel")});
    EXPECT_EQ(libraries.status, 0);
    EXPECT_THAT(libraries.out, HasSubstr("libplist"));
    EXPECT_THAT(libraries.out,
                AllOf(Not(HasSubstr("libX11")), Not(HasSubstr("libxcb")), Not(HasSubstr("libQt"))));
}

TEST_F(FrontDoor, HandsSessionCommandsOverWithEveryWord) {
    installSession("usr/libexec/orvel/orvel-session", "libexec");
    for (const char* command : {"run", "record", "doctor", "panel"}) {
        const ProgramRun run = installed({command, "--any", "a b", ""});
        EXPECT_EQ(run.status, 7);
        EXPECT_EQ(run.out, "libexec\n[" + std::string(command) + "][--any][a b][]");
    }
}

TEST_F(FrontDoor, WithoutACommandItRuns) {
    installSession("usr/libexec/orvel/orvel-session", "libexec");
    EXPECT_EQ(installed({}).out, "libexec\n[run]");
}

TEST_F(FrontDoor, PrefersTheSessionProgramBesideIt) {
    installSession("usr/libexec/orvel/orvel-session", "libexec");
    installSession("usr/bin/orvel-session", "beside");
    EXPECT_THAT(installed({"run"}).out, StartsWith("beside\n"));
    fs::create_symlink(home.at("usr/bin/orvel"), home.at("orvel"));
    EXPECT_THAT(runProgram({home.at("orvel"), "run"}).out, StartsWith("beside\n"))
        << "through a link";
}

TEST_F(FrontDoor, SaysWhereItLookedForASessionProgramThatIsNotThere) {
    const ProgramRun run = installed({"run"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, AllOf(StartsWith("orvel: "), HasSubstr(home.at("usr/bin/orvel-session")),
                               HasSubstr("libexec/orvel/orvel-session")));
}

TEST_F(FrontDoor, ReplaysAFileAndStandardInput) {
    const std::string steps = "{\"event\": {\"type\": \"keyDown\", \"key\": 36}}\n";
    home.write("steps.jsonl", steps);
    const ProgramRun file = orvel({"replay", home.at("steps.jsonl")});
    EXPECT_EQ(file.status, 0) << file.err;
    EXPECT_THAT(file.out, Not(IsEmpty()));
    EXPECT_EQ(orvel({"replay", "-"}, steps).out, file.out);
    const ProgramRun absent = orvel({"replay", home.at("absent")});
    EXPECT_NE(absent.status, 0);
    EXPECT_THAT(absent.err, HasSubstr(home.at("absent")));
}

TEST_F(FrontDoor, PrintsTheTableOfRulesInOrder) {
    const ProgramRun rules = orvel({"rules"});
    EXPECT_EQ(rules.status, 0);
    const std::size_t own = rules.out.find("own events");
    const std::size_t gate = rules.out.find("master switch");
    ASSERT_NE(own, std::string::npos);
    ASSERT_NE(gate, std::string::npos);
    EXPECT_LT(own, gate);
    EXPECT_EQ(orvel({"rules", "extra"}).status, 2);
}

}  // namespace
}  // namespace orvel::test
