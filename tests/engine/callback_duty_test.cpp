#include "tests/engine/engine_fixture.hpp"

namespace orvel::test {
namespace {

/// Notices calls that may wait for somebody while the event callback has not returned.
class DutyLog {
public:
    bool isInCallback = false;
    std::vector<std::string> slowCalls;

    void called(const std::string& what) {
        if (isInCallback) slowCalls.push_back(what);
    }
};

class WatchedScripts final : public ScriptRunner {
public:
    explicit WatchedScripts(DutyLog& duty) : duty_(duty) {}
    Result<std::string> run(std::string_view source) override {
        duty_.called(std::string(source));
        return std::string();
    }

private:
    DutyLog& duty_;
};

class WatchedTasks final : public TaskRunner {
public:
    explicit WatchedTasks(DutyLog& duty) : duty_(duty) {}
    Result<std::string> run(std::string_view path, const std::vector<std::string>&) override {
        duty_.called(std::string(path));
        return std::string();
    }
    Result<> launch(std::string_view path, const std::vector<std::string>&) override {
        duty_.called(std::string(path));
        return {};
    }

private:
    DutyLog& duty_;
};

class CallbackDuty : public MemoryFixture {
protected:
    DutyLog duty;
    WatchedScripts scripts{duty};
    WatchedTasks tasks{duty};
    CommandLog commands;
    FakeOverlay overlay{commands};
    FakeClipboard clipboard{commands};
    FakeFinderMenu finderMenu{commands};
    Preferences preferences{desk.preferenceStore};
    OrvelEngine engine{{desk.accessibilityPermission, desk.accessibilityWindows, desk.appControl,
                        desk.capsLock, desk.eventPoster, desk.eventTap, desk.fileSystem,
                        desk.haptics, desk.inputSources, desk.inputState, desk.launcher, desk.log,
                        desk.runLoop, desk.screens, scripts, tasks, desk.workspace},
                       {overlay, clipboard, finderMenu},
                       preferences};
};

TEST_F(CallbackDuty, NeverRunsAScriptOrAProcessInside) {
    for (const auto& info : kPreferenceTable) {
        if (info.type == PreferenceType::boolean) prefer(info.name, true);
    }
    prefer("map_ctrl", std::string("Win"));
    desk.world.frontmost = "com.apple.finder";
    engine.start();
    engine.setWindowsModeEnabled(true);
    drain();
    duty.slowCalls.clear();
    for (KeyCode code = 0; code < 128; ++code) {
        for (const EventFlags flags : {flag::none, flag::control, flag::control | flag::shift,
                                       flag::option, flag::command, flag::shift}) {
            duty.isInCallback = true;
            desk.eventTap.deliver(keyDown(code, flags));
            desk.eventTap.deliver(keyUp(code, flags));
            desk.eventTap.deliver(flagsChanged(code, flags));
            desk.eventTap.deliver(buttonDown(code % 6, flags));
            duty.isInCallback = false;
            drain();
        }
    }
    EXPECT_THAT(duty.slowCalls, ::testing::IsEmpty());
    EXPECT_FALSE(commands.empty());
}

}  // namespace
}  // namespace orvel::test
