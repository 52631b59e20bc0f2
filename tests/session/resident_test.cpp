#include "tests/session/tap_session.hpp"
#include "tests/support/poll_until.hpp"
#include "tools/rig/clipboard_app.hpp"
#include "tools/rig/screen_locker.hpp"
#include "tools/rig/session_bus.hpp"
#include "tools/rig/text_field_app.hpp"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace orvel::test {
namespace {

using rig::KeyProbe;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string frontDoor() { return std::string(std::getenv("ORVEL_BUILD_DIR")) + "/orvel"; }
std::string program() { return std::string(std::getenv("ORVEL_BUILD_DIR")) + "/orvel-session"; }

class ResidentTest : public TapSessionTest {
protected:
    using Process = std::unique_ptr<rig::ChildProcess>;

    static Process start(std::vector<std::string> arguments, const rig::Environment& extra = {}) {
        arguments.insert(arguments.begin(), program());
        return std::make_unique<rig::ChildProcess>(
            rig::Command{.arguments = std::move(arguments),
                         .environment = rig::merged(desktop().environment(), extra)});
    }
    static Process startResident(std::vector<std::string> options = {}) {
        options.insert(options.begin(), "run");
        Process process = start(std::move(options));
        if (!process->out().waitForText("引擎工作状态已设为")) {
            ADD_FAILURE() << "it does not start: " << process->err().text();
        }
        // Its own first setting is on the disk, so that it meets none of ours half-way.
        EXPECT_TRUE(eventually([] { return rig::contentOf(settingsFile()); },
                               HasSubstr("NSInitialToolTipDelay")));
        return process;
    }
    static void set(const std::string& key, const std::string& plistValue) {
        std::filesystem::create_directories(settingsFile().parent_path());
        settings_[key] = plistValue;
        std::ofstream file(settingsFile());
        file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
        for (const auto& [name, value] : settings_) file << "<key>" << name << "</key>" << value;
        file << "</dict></plist>\n";
    }
    /// The mapping that makes Control act as Command and the Super key as Win.
    static void setUsualMapping() {
        set("card_modifier", "<true/>");
        set("map_ctrl", "<string>Cmd</string>");
        set("map_cmd", "<string>Win</string>");
        set("map_option", "<string>Alt</string>");
    }
    static std::filesystem::path traceFile() {
        return desktop().home().state() / "orvel" / "trace.log";
    }
    static std::filesystem::path settingsFile() {
        return desktop().home().config() / "orvel" / "preferences.plist";
    }
    static std::string traced() { return rig::contentOf(traceFile()); }
    static rig::ExitStatus exited(int code) { return {.code = code, .signal = {}}; }

    static inline std::map<std::string, std::string> settings_;
};

TEST_F(ResidentTest, StartsTheEngineAndEndsInGoodOrderOnRequest) {
    for (const int signal : {SIGTERM, SIGINT}) {
        Process orvel = startResident();
        EXPECT_THAT(orvel->out().text(), HasSubstr("✅ Orvel引擎启动成功"));
        EXPECT_THAT(orvel->out().text(),
                    HasSubstr("⚡️ 开机自检完毕，引擎工作状态已设为: false"));
        orvel->signal(signal);
        EXPECT_EQ(orvel->waitForExit(), exited(0));
        EXPECT_FALSE(hasTap(desktop().x()));
    }
}

TEST_F(ResidentTest, SaysWhichDisplayItCannotOpen) {
    Process orvel = start({"run"}, {{"DISPLAY", ":4711"}});
    EXPECT_EQ(orvel->waitForExit(), exited(1));
    EXPECT_TRUE(orvel->err().waitForText(":4711"));
}

TEST_F(ResidentTest, NamesAWrongOption) {
    Process orvel = start({"run", "--loud"});
    EXPECT_EQ(orvel->waitForExit(), exited(2));
    EXPECT_TRUE(orvel->err().waitForText("--loud"));
}

TEST_F(ResidentTest, TheDoctorIsContentWithThisDesktop) {
    Process doctor = start({"doctor"});
    EXPECT_EQ(doctor->waitForExit(), exited(0));
    EXPECT_TRUE(doctor->out().waitForEnd());
    EXPECT_THAT(doctor->out().text(), HasSubstr("ok       keyboards: kbd0, kbd1\n"));
    EXPECT_THAT(doctor->out().text(), HasSubstr("platform.conf"));
    EXPECT_THAT(doctor->out().text(), HasSubstr("ok       clipboard: changes are noticed"));
    EXPECT_THAT(doctor->out().text(), HasSubstr("ok       force quit: "));
    EXPECT_THAT(doctor->out().text(), Not(HasSubstr("MISSING")));
}

TEST_F(ResidentTest, NoKeyWaitsForAnApplicationThatCopiedAndHangs) {
    setUsualMapping();
    KeyProbe probe = startProbe();
    Process orvel = startResident();
    rig::ClipboardApp hanging(rig::ClipboardApp::Kind::plain, desktop().environment());
    hanging.tell("mute");
    hanging.tell("own");
    ASSERT_TRUE(hanging.process().out().waitForText("asked TARGETS"));
    probe.clear();
    const auto begin = std::chrono::steady_clock::now();
    keyboard().tap("j");
    EXPECT_EQ(probe.waitForKeys(2).size(), 2U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(1500));
    orvel->signal(SIGTERM);
    EXPECT_EQ(orvel->waitForExit(), exited(0)) << "nor does the end of the program";
}

TEST_F(ResidentTest, TheDoctorNamesWhatIsEssentialAndMissing) {
    Process doctor = start({"doctor"}, {{"DISPLAY", ":4711"}});
    EXPECT_EQ(doctor->waitForExit(), exited(1));
    EXPECT_TRUE(doctor->out().waitForEnd());
    EXPECT_THAT(doctor->out().text(), HasSubstr("MISSING  X server: cannot open"));
}

TEST_F(ResidentTest, TheTraceHoldsRewrittenKeysAndIsReadableByItsOwnerOnly) {
    setUsualMapping();
    KeyProbe probe = startProbe();
    Process orvel = startResident({"--trace"});
    keyboard().chord({"Control_L", "c"});
    EXPECT_TRUE(eventually([] { return traced(); }, HasSubstr("PATCH -> Key: ")));
    EXPECT_EQ(std::filesystem::status(traceFile()).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    orvel->stop();
    std::filesystem::remove(traceFile());
}

TEST_F(ResidentTest, TheWheelTurnsAroundWhileItsSwitchIsOn) {
    setUsualMapping();
    set("card_scroll", "<true/>");
    Process orvel = startResident();
    KeyProbe probe = startProbe();
    state().warpPointer({probe.centreX(), probe.centreY()});
    probe.clear();
    mouse().turnWheelAsButtons(1);
    const KeyProbe::Events seen = probe.waitForButtonsAndScrolls(2);
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front().detail, 4);
    orvel->signal(SIGTERM);
    EXPECT_EQ(orvel->waitForExit(), exited(0));
    set("card_scroll", "<false/>");
}

TEST_F(ResidentTest, ALoneShiftTapSwitchesTheLayoutAndBack) {
    setUsualMapping();
    set("card_shift", "<true/>");
    desktop().server().setLayout("us,de");
    Process orvel = startResident();
    keyboard().tap("Shift_L");
    EXPECT_TRUE(eventually([] { return state().layoutGroup(); }, 1));
    keyboard().tap("Shift_L");
    EXPECT_TRUE(eventually([] { return state().layoutGroup(); }, 0));
    orvel->signal(SIGTERM);
    EXPECT_EQ(orvel->waitForExit(), exited(0));
    desktop().server().setLayout("us");
}

TEST_F(ResidentTest, RecordsNothingWithoutConsent) {
    const auto file = desktop().home().path() / "session.steps.jsonl";
    Process orvel = start({"record", file.string()});
    EXPECT_EQ(orvel->waitForExit(), exited(2));
    EXPECT_TRUE(orvel->err().waitForText("--yes-record-keys"));
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(ResidentTest, RecordsASessionThatCanBeReplayed) {
    setUsualMapping();
    KeyProbe probe = startProbe();
    const auto file = desktop().home().path() / "session.steps.jsonl";
    Process orvel = start({"record", "--yes-record-keys", file.string()});
    ASSERT_TRUE(orvel->out().waitForText("引擎工作状态已设为"));
    keyboard().chord({"Control_L", "c"});
    // Lines wait until it is known that the probe tells nobody what it is.
    EXPECT_TRUE(eventually([&] { return rig::contentOf(file); }, HasSubstr(R"("keyUp","key":8,)")));
    {
        rig::ScreenLocker locker(desktop().environment());
        keyboard().type("q\n");
        ASSERT_TRUE(locker.nextPassword().has_value());
        locker.unlock();
    }
    orvel->signal(SIGTERM);
    EXPECT_EQ(orvel->waitForExit(), exited(0));
    const std::string steps = rig::contentOf(file);
    EXPECT_THAT(steps, HasSubstr(R"({"event":{"type":"keyDown","key":8,"flags":262144}})"));
    EXPECT_THAT(steps, HasSubstr(R"(# {"decision":"modify","key":8,"flags":1048576})"));
    EXPECT_THAT(steps, Not(HasSubstr(R"("key":12,)")));
    EXPECT_EQ(std::filesystem::status(file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);

    rig::ChildProcess replay({.arguments = {frontDoor(), "replay", file.string()},
                              .environment = desktop().environment()});
    EXPECT_EQ(replay.waitForExit(), exited(0));
    EXPECT_TRUE(replay.out().waitForEnd());
    EXPECT_THAT(replay.out().text(), HasSubstr(R"("decision":"modify","key":8,"flags":1048576)"))
        << replay.err().text();
}

TEST_F(ResidentTest, RecordsNothingThatIsTypedIntoAPasswordField) {
    const rig::SessionBus bus(desktop().environment(), rig::SessionBus::Accessibility::on);
    const auto file = desktop().home().path() / "session.steps.jsonl";
    Process orvel = start({"record", "--yes-record-keys", file.string()}, bus.environment());
    ASSERT_TRUE(orvel->out().waitForText("引擎工作状态已设为"));
    const auto environment =
        rig::merged(bus.environment(), {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}});
    {
        rig::TextFieldApp plain(rig::TextFieldApp::Kind::plain, environment, desktop().x());
        // What is typed before the window has told anything is not kept.
        const auto typed = [&] {
            keyboard().type("w");
            return rig::contentOf(file);
        };
        EXPECT_TRUE(eventually(typed, HasSubstr(R"("key":13,)"))) << orvel->err().text();
    }
    rig::TextFieldApp field(rig::TextFieldApp::Kind::password, environment, desktop().x());
    keyboard().type("zzz\n");
    ASSERT_EQ(field.nextText(), "zzz");
    orvel->signal(SIGTERM);
    EXPECT_EQ(orvel->waitForExit(), exited(0));
    EXPECT_THAT(rig::contentOf(file), Not(HasSubstr(R"("key":6,)")));
}

}  // namespace
}  // namespace orvel::test
