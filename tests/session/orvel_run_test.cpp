#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/orvel_program.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/screen_locker.hpp"
#include "tools/rig/text_field_app.hpp"

#include <chrono>
#include <csignal>
#include <string>
#include <vector>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using rig::OrvelProgram;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Shift+Backspace deletes forward.
const rig::Settings kForwardDelete{{"card_eject", true}};

/// The program itself, as a user starts it, seen from the devices and from the applications.
class OrvelRunTest : public TapSessionTest {
protected:
    void SetUp() override { rig::writeSettings(environment(), {}); }

    static const rig::Environment& environment() { return desktop().environment(); }
    static OrvelProgram start(const rig::Settings& settings,
                              const std::vector<std::string>& options = {}) {
        rig::writeSettings(environment(), settings);
        return {ORVEL_PROGRAM, environment(), options};
    }
    /// Runs a second one that shall not stay; what it said, with its exit status.
    static std::pair<rig::ExitStatus, std::string> tryToRun(const rig::Environment& extra = {}) {
        rig::ChildProcess program({.arguments = {ORVEL_PROGRAM, "run"},
                                   .environment = rig::merged(environment(), extra)});
        const auto status = program.waitForExit();
        program.err().waitForEnd(milliseconds(500));
        if (!status) throw rig::RigError("orvel run stays");
        return {*status, program.err().text()};
    }
    static std::string traceText() {
        return rig::contentOf(desktop().home().state() / "orvel/trace.log");
    }
    static void expectPlainTyping(KeyProbe& probe) {
        EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
        EXPECT_TRUE(eventually([] { return hasTap(desktop().x()); }, false));
        probe.clear();
        keyboard().type("ok");
        EXPECT_EQ(probe.text(), "ok");
    }
    /// The keys that a rule rewrites also while nothing of them may be kept.
    static void deleteForward() { keyboard().chord({"Shift_L", "BackSpace"}); }
};

TEST_F(OrvelRunTest, WithEverySwitchOffTextPassesAsTyped) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start({});
    const std::string text = "Nothing changes: {until} one is ON?";
    keyboard().type(text);
    EXPECT_TRUE(eventually([&] { return probe.text(); }, text));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(OrvelRunTest, UnderTheUsualMappingControlCStillCopies) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start(rig::usualMapping());
    keyboard().chord({"Control_L", "c"});
    EXPECT_THAT(spelled(probe.waitForKeys(4)), ElementsAre("+Control_L", "+c", "-c", "-Control_L"));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(OrvelRunTest, ShiftBackspaceDeletesForward) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start(kForwardDelete);
    deleteForward();
    EXPECT_TRUE(eventually([&] { return spelled(probe.keys()); },
                           testing::AllOf(testing::IsSupersetOf({"+Delete", "-Delete"}),
                                          testing::Not(testing::Contains("+BackSpace")))));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(OrvelRunTest, ASettingThatAnotherProgramWritesHoldsFromTheNextKeyOn) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start({{"card_modifier", true}});
    deleteForward();
    probe.waitForKeys(4);
    EXPECT_THAT(spelled(probe.keys()), testing::Contains("+BackSpace"));
    // Its own first setting is on the disk, so that it does not write over ours.
    EXPECT_TRUE(eventually([] { return desktop().home().filesContaining("NSInitialToolTipDelay"); },
                           testing::Not(IsEmpty())));
    rig::writeSettings(environment(), {{"card_modifier", true}, {"card_eject", true}});
    EXPECT_TRUE(eventually(
        [&] {
            probe.clear();
            deleteForward();
            probe.waitForKeys(4, milliseconds(200));
            return spelled(probe.keys());
        },
        testing::Contains("+Delete")));
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(OrvelRunTest, EndedUnderHeldKeysItLeavesNothingDown) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start(rig::usualMapping());
    keyboard().press("Control_L");
    keyboard().press("c");
    EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); }, testing::SizeIs(2)));
    EXPECT_TRUE(orvel.stop().success());
    EXPECT_THAT(state().syntheticKeysDown(), IsEmpty());
    keyboard().release("c");
    keyboard().release("Control_L");
    expectPlainTyping(probe);
}

TEST_F(OrvelRunTest, KilledUnderHeldKeysItLeavesAWorkingKeyboardAndNoProcess) {
    KeyProbe probe = startProbe();
    const std::vector<int> before = rig::processesOf(desktop().home().path());
    OrvelProgram orvel = start(rig::usualMapping());
    keyboard().press("Control_L");
    keyboard().press("c");
    EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); }, testing::SizeIs(2)));
    orvel.process().signal(SIGKILL);
    EXPECT_TRUE(eventually([] { return state().syntheticKeysDown(); }, IsEmpty()));
    keyboard().release("c");
    keyboard().release("Control_L");
    expectPlainTyping(probe);
    EXPECT_TRUE(eventually([] { return rig::processesOf(desktop().home().path()); },
                           testing::UnorderedElementsAreArray(before)));
}

TEST_F(OrvelRunTest, StoppedItIsEndedAndTheKeyboardIsBackWithinThreeSeconds) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start(rig::usualMapping());
    orvel.process().signal(SIGSTOP);
    const auto ended = orvel.process().waitForExit(milliseconds(3000));
    ASSERT_TRUE(ended.has_value());
    EXPECT_EQ(ended->signal, SIGKILL);
    expectPlainTyping(probe);
}

TEST_F(OrvelRunTest, ASecondOneInTheSameSessionEndsWithAClearLine) {
    OrvelProgram orvel = start({});
    const auto [status, said] = tryToRun();
    EXPECT_FALSE(status.success());
    EXPECT_THAT(said, HasSubstr("already running"));
    EXPECT_THAT(said, HasSubstr(std::to_string(orvel.process().pid())));
    EXPECT_TRUE(orvel.process().running());
    EXPECT_TRUE(orvel.stop().success());
}

TEST_F(OrvelRunTest, UnderWaylandItSaysThatItCannotWorkAndEnds) {
    const auto [status, said] =
        tryToRun({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_SESSION_TYPE", "wayland"}});
    EXPECT_FALSE(status.success());
    EXPECT_THAT(said, HasSubstr("Wayland"));
    EXPECT_FALSE(hasTap(desktop().x()));
}

TEST_F(OrvelRunTest, WithoutTraceNothingIsTraced) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start(kForwardDelete);
    deleteForward();
    EXPECT_TRUE(eventually([&] { return spelled(probe.keys()); }, testing::Contains("-Delete")));
    EXPECT_TRUE(orvel.stop().success());
    EXPECT_THAT(traceText(), IsEmpty());
}

TEST_F(OrvelRunTest, NothingTypedIntoALockerIsKept) {
    KeyProbe probe = startProbe();
    OrvelProgram orvel = start(kForwardDelete, {"--trace"});
    deleteForward();
    EXPECT_TRUE(eventually([] { return traceText(); }, testing::Not(IsEmpty())));
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    const std::string traced = traceText();
    rig::ScreenLocker locker(environment());
    keyboard().type("correct horse ");
    deleteForward();
    keyboard().type("battery\n");
    // Delete types a control character there.
    EXPECT_THAT(locker.nextPassword(),
                testing::Optional(testing::AllOf(testing::StartsWith("correct horse "),
                                                 testing::EndsWith("battery"))));
    locker.unlock();
    EXPECT_TRUE(orvel.stop().success());
    EXPECT_EQ(traceText(), traced);
    EXPECT_THAT(desktop().home().filesContaining("horse"), IsEmpty());
    EXPECT_THAT(desktop().home().filesContaining("battery"), IsEmpty());
    EXPECT_THAT(orvel.process().out().text(), testing::Not(HasSubstr("horse")));
    EXPECT_THAT(orvel.process().err().text(), testing::Not(HasSubstr("horse")));
}

TEST_F(OrvelRunTest, NothingTypedIntoAPasswordFieldIsKept) {
    OrvelProgram orvel = start(rig::usualMapping(), {"--trace"});
    rig::TextFieldApp field(rig::TextFieldApp::Kind::password, environment(), desktop().x());
    keyboard().type("hunter2secret\n");
    EXPECT_EQ(field.nextText(), "hunter2secret");
    EXPECT_TRUE(orvel.stop().success());
    EXPECT_THAT(desktop().home().filesContaining("hunter2"), IsEmpty());
    EXPECT_THAT(orvel.process().out().text(), testing::Not(HasSubstr("hunter2")));
}

}  // namespace
}  // namespace orvel::test
