#include "app/cli/prefs_command.hpp"
#include "app/mac/mac_recording.hpp"
#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/input_state.hpp"
#include "platform/macos/mac_checks.hpp"
#include "platform/macos/mac_end_signals.hpp"
#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_power_dry_run.hpp"
#include "platform/macos/mac_running_note.hpp"
#include "platform/macos/mac_settings_requests.hpp"
#include "tests/macos/run/mac_test.hpp"
#include "tests/support/scratch_home.hpp"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace orvel::macos {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

class MacChecksTest : public MacTest {
protected:
    MacChecksTest() { writeDock("<dict><key>persistent-apps</key><array/></dict>"); }

    static std::filesystem::path dockFile() {
        return std::string([NSHomeDirectory() UTF8String]) +
               "/Library/Preferences/com.apple.dock.plist";
    }
    static void writeDock(const std::string& root) {
        std::filesystem::create_directories(dockFile().parent_path());
        std::ofstream(dockFile())
            << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD "
               "PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist "
               "version=\"1.0\">"
            << root << "</plist>";
    }
    static ServiceCheck check(const std::string& name) {
        const auto checks = checkMac();
        const auto found = std::ranges::find(checks, name, &ServiceCheck::name);
        if (found == checks.end()) ADD_FAILURE() << "no check " << name;
        return found == checks.end() ? ServiceCheck{} : *found;
    }
};

TEST_F(MacChecksTest, FindsNothingMissingWhereEverythingIsGranted) {
    for (const ServiceCheck& found : checkMac()) {
        if (found.name == "bundle") continue;
        EXPECT_TRUE(found.isOk) << found.name << ": " << found.finding;
        EXPECT_THAT(found.remedy, IsEmpty()) << found.name;
    }
}

TEST_F(MacChecksTest, LooksWithoutATrace) {
    mac().session.isTrusted = false;
    mac().mayCapture = false;
    checkMac();
    EXPECT_THAT(fake::taps(), IsEmpty());
    EXPECT_EQ(mac().trustPrompts, 0);
    EXPECT_EQ(mac().capturePrompts, 0);
}

TEST_F(MacChecksTest, WithoutTheAccessibilityPermissionNothingEssentialWorks) {
    mac().session.isTrusted = false;
    for (const char* name : {"accessibility", "event tap"}) {
        const ServiceCheck found = check(name);
        EXPECT_FALSE(found.isOk) << name;
        EXPECT_TRUE(found.isEssential) << name;
        EXPECT_THAT(found.remedy, Not(IsEmpty())) << name;
    }
}

TEST_F(MacChecksTest, ScreenRecordingIsOnlyForPictures) {
    mac().mayCapture = false;
    const ServiceCheck found = check("screen recording");
    EXPECT_FALSE(found.isOk);
    EXPECT_FALSE(found.isEssential);
    EXPECT_THAT(found.remedy, HasSubstr("Screen Recording"));
}

TEST_F(MacChecksTest, TellsARefusedAutomationFromOneNobodyWasAskedFor) {
    mac().automation = {{"com.apple.finder", -1743}, {"com.apple.systemevents", -1744}};
    EXPECT_THAT(check("automation of Finder").remedy, HasSubstr("Automation"));
    EXPECT_THAT(check("automation of System Events").remedy, HasSubstr("answer yes"));
    mac().automation["com.apple.finder"] = -600;
    EXPECT_TRUE(check("automation of Finder").isOk);
}

TEST_F(MacChecksTest, NamesTheProgramThatKeepsSecureInput) {
    mac().applications[40] = {.name = "Password Keeper"};
    mac().session.isSecureInput = true;
    mac().session.secureInputOwner = 40;
    const ServiceCheck found = check("secure input");
    EXPECT_FALSE(found.isOk);
    EXPECT_FALSE(found.isEssential);
    EXPECT_THAT(found.finding, AllOf(HasSubstr("Password Keeper (process 40)"),
                                     HasSubstr("nothing is recorded or traced")));
}

TEST_F(MacChecksTest, NoticesADockFileThatHoldsNoApplications) {
    writeDock("<dict/>");
    EXPECT_FALSE(check("Dock").isOk);
    writeDock("<dict><key>persistent-apps</key>");
    EXPECT_FALSE(check("Dock").isOk);
    std::filesystem::remove(dockFile());
    EXPECT_FALSE(check("Dock").isOk);
}

TEST_F(MacChecksTest, ALoginItemMayWaitForApproval) {
    EXPECT_THAT(check("login item").finding, HasSubstr("does not start"));
    mac().isLoginItem = true;
    EXPECT_THAT(check("login item").finding, "starts with the session");
    mac().loginItemNeedsApproval = true;
    EXPECT_FALSE(check("login item").isOk);
    EXPECT_THAT(check("login item").remedy, HasSubstr("Login Items"));
}

TEST_F(MacChecksTest, TellsWhetherTheRunningProgramSeesTheInput) {
    EXPECT_EQ(check("running").finding, "no");
    const RunningNote note;
    EXPECT_FALSE(check("running").isOk);
    {
        LogLines log;
        const auto poster = makeEventPoster();
        const auto input = makeInputState();
        const auto tap = makeEventTap(*poster, *input, log);
        ASSERT_TRUE(tap->create({.mask = 1}, [](Event&) { return EventVerdict::pass; }));
        EXPECT_THAT(check("running").finding, HasSubstr("switched off"));
        tap->enable();
        EXPECT_TRUE(check("running").isOk);
    }
    EXPECT_THAT(check("running").finding, HasSubstr("no event tap"));
}

class MacCommandLineTest : public MacTest {
protected:
    MacCommandLineTest() {
        NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
        for (NSString* key in [defaults dictionaryRepresentation]) {
            [defaults removeObjectForKey:key];
        }
    }

    void TearDown() override {
        line = {};
        MacTest::TearDown();
    }

    CommandLine line = makeCommandLine([](std::string_view) {});
    std::ostringstream out, err;
};

TEST_F(MacCommandLineTest, StoresWhatTheProgramReads) {
    PrefsCommand prefs(line, out, err);
    EXPECT_EQ(prefs.set("card_fn", {"true"}), 0) << err.str();
    const auto store = makePreferenceStore();
    const PreferenceValue* value = store->value(store->handle("card_fn"));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, PreferenceValue(true));
    EXPECT_EQ(prefs.unset("card_fn"), 0);
    EXPECT_EQ(prefs.get("card_fn"), 0);
    EXPECT_THAT(out.str(), HasSubstr("(absent)"));
}

TEST_F(MacCommandLineTest, AnExportComesBackAsItWas) {
    PrefsCommand prefs(line, out, err);
    prefs.set("card_fn", {"false"});
    prefs.set("orvel_pinned_apps", {"com.apple.Safari", "中文"});
    EXPECT_EQ(prefs.exportTo("-"), 0);
    const std::string exported = out.str();
    prefs.unset("card_fn");
    prefs.unset("orvel_pinned_apps");
    std::istringstream in(exported);
    EXPECT_EQ(prefs.importFrom("-", in, false), 0) << err.str();
    out.str("");
    prefs.get("card_fn");
    prefs.get("orvel_pinned_apps");
    EXPECT_EQ(out.str(), "false\n[\"com.apple.Safari\",\"中文\"]\n");
}

TEST_F(MacCommandLineTest, RefusesAnImportThatIsNoDictionary) {
    PrefsCommand prefs(line, out, err);
    for (const char* text : {"<plist version=\"1.0\"><array/></plist>", "nonsense", ""}) {
        std::istringstream in(text);
        EXPECT_EQ(prefs.importFrom("-", in, false), 2) << text;
    }
    EXPECT_THAT(err.str(), Not(IsEmpty()));
}

TEST_F(MacCommandLineTest, KnowsTheRunningProgramByItsNote) {
    EXPECT_THAT(line.runningEngines(), IsEmpty());
    {
        RunningNote note;
        note.update(true, true);
        ASSERT_THAT(line.runningEngines(), SizeIs(1));
        EXPECT_TRUE(line.runningEngines().front().isOn);
        EXPECT_TRUE(line.runningEngines().front().isPaused);
    }
    EXPECT_THAT(line.runningEngines(), IsEmpty());
}

TEST_F(MacCommandLineTest, TheNoteOutlivesASweepOfTheTemporaryFolder) {
    RunningNote note;
    note.update(true, true);
    for (const auto& entry : std::filesystem::directory_iterator(getenv("HOME"))) {
        if (entry.path().extension() == ".running") std::filesystem::remove(entry);
    }
    ASSERT_THAT(line.runningEngines(), IsEmpty());
    fake::advance(std::chrono::hours(12));
    ASSERT_THAT(line.runningEngines(), SizeIs(1));
    EXPECT_TRUE(line.runningEngines().front().isPaused);
}

class MacSettingsRequestsTest : public MacTest {};

TEST_F(MacSettingsRequestsTest, HearsCommandsAndAPersonWhoOpensTheProgramAgain) {
    int asked = 0;
    {
        const SettingsRequests requests([&] { ++asked; });
        requestSettings();
        EXPECT_EQ(asked, 1);
        EXPECT_THAT(mac().broadcasts, SizeIs(1));
        fake::reopen();
        EXPECT_EQ(asked, 2);
    }
    requestSettings();
    fake::reopen();
    EXPECT_EQ(asked, 2);
}

class MacEndSignalsTest : public MacTest {};

TEST_F(MacEndSignalsTest, AsksToEndOnTheMainThread) {
    int asked = 0;
    const EndSignals signals([&] { asked += fake::isMainThread() ? 1 : 100; });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) EXPECT_TRUE(fake::raiseSignal(signal));
    EXPECT_EQ(asked, 0) << "not inside the handler of the signal";
    fake::runDue();
    EXPECT_EQ(asked, 3);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) std::signal(signal, SIG_DFL);
}

TEST_F(MacEndSignalsTest, LeavesTheSignalsOfProgramsThatAreStartedAsTheyWere) {
    const EndSignals signals([] {});
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        // Ignoring is what a new program inherits.
        EXPECT_NE(std::signal(signal, SIG_DFL), SIG_IGN);
    }
}

class MacPowerDryRunTest : public ::testing::Test {
protected:
    struct Scripts final : ScriptRunner {
        Result<std::string> run(std::string_view source) override {
            ran.emplace_back(source);
            return std::string("done");
        }
        std::vector<std::string> ran;
    } scripts;
    std::vector<std::string> said;
    PowerDryRun dryRun{scripts, [this](std::string_view line) { said.emplace_back(line); }};
};

TEST_F(MacPowerDryRunTest, ReportsPowerActionsAndRunsAllElse) {
    const std::string shutDown = "tell application \"System Events\" to shut down";
    const std::string other = "tell application \"System Events\" to get the name of it";
    EXPECT_TRUE(dryRun.run(shutDown));
    EXPECT_EQ(dryRun.run(other).value(), "done");
    EXPECT_THAT(scripts.ran, ElementsAre(other));
    EXPECT_THAT(said, ElementsAre(HasSubstr(shutDown)));
}

class MacRecordingTest : public MacTest {
protected:
    MacRecordingTest() : desktop(makeDesktop(contents, {})), recording(desktop->ports(), path()) {
        ports.emplace(desktop->portsWith(recording.ports()));
    }
    struct NoContents final : PanelContents {
        CFTypeRef viewOf(PanelId, double) override { return nullptr; }
    } contents;

    std::string path() { return folder.path() + "/steps.jsonl"; }
    std::string written() {
        std::ifstream file(path());
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void startTap() {
        ASSERT_TRUE(ports->eventTap.create({.mask = ~EventMask{0}},
                                           [](Event&) { return EventVerdict::pass; }));
        ports->eventTap.enable();
    }

    test::ScratchFolder folder;
    std::unique_ptr<MacDesktop> desktop;
    session::MacRecording recording;
    std::optional<Desktop> ports;
};

TEST_F(MacRecordingTest, WritesSettingsThenEventsWithWhatBecameOfThem) {
    NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
    [defaults setObject:[NSNumber numberWithBool:YES] forKey:@"card_fn"];
    recording.recorder().begin();
    startTap();
    fake::sendKey({.type = 10, .keyCode = 36});
    EXPECT_THAT(written(), AllOf(HasSubstr("\"card_fn\":true"), HasSubstr("\"key\":36"),
                                 HasSubstr("# {\"decision\":\"pass\"}")));
    keepReferences();
}

TEST_F(MacRecordingTest, StopsWhileSecureInputIsOnOrTheScreenIsLocked) {
    recording.recorder().begin();
    startTap();
    mac().session.isSecureInput = true;
    fake::sendKey({.type = 10, .keyCode = 51});
    mac().session.isSecureInput = false;
    mac().session.isLocked = true;
    fake::sendKey({.type = 10, .keyCode = 52});
    mac().session.isLocked = false;
    fake::sendKey({.type = 10, .keyCode = 53});
    EXPECT_THAT(written(), AllOf(Not(HasSubstr("\"key\":51")), Not(HasSubstr("\"key\":52")),
                                 HasSubstr("\"key\":53")));
    keepReferences();
}

}  // namespace
}  // namespace orvel::macos
