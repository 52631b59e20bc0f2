// Cost of the event callback by kind of event, all feature cards on. The pass path must not
// allocate: every allocation inside the measured loop is counted, and a plain letter that
// allocates fails the bench.

#include "app/preferences.hpp"
#include "bench/counting_allocator.hpp"
#include "engine/orvel_engine.hpp"
#include "platform/memory/memory_desktop.hpp"
#include "platform/x11/x11_preference_store.hpp"
#include "tests/engine/fake_rooms.hpp"
#include "tests/support/event_builders.hpp"
#include "tests/support/scratch_home.hpp"

#include <benchmark/benchmark.h>

#include <string_view>

namespace orvel {
namespace {

/// Keeps the engine's handler, so that nothing but the callback is measured.
class OpenTap final : public EventTap {
public:
    [[nodiscard]] bool create(const EventTapRequest&, EventHandler handler) override {
        handler_ = std::move(handler);
        return true;
    }
    void enable() override {}
    [[nodiscard]] bool exists() const override { return handler_ != nullptr; }
    [[nodiscard]] bool isEnabled() const override { return true; }

    EventVerdict handle(Event event) { return handler_(event); }

private:
    EventHandler handler_;
};

class Session {
public:
    explicit Session(const char* frontmost) {
        desk_.effects.mute();
        desk_.world.frontmost = frontmost;
        for (const PreferenceInfo& info : kPreferenceTable) {
            const bool isCard = info.key <= PreferenceKey::cardWinAdvanced;
            // In media mode the F-row would hide the keys behind it.
            if (isCard) preferences_.setBool(info.key, info.key != PreferenceKey::cardFkeys);
        }
        preferences_.setString(PreferenceKey::mapCtrl, "Cmd");
        preferences_.setString(PreferenceKey::mapOption, "Alt");
        preferences_.setString(PreferenceKey::mapCmd, "Win");
        engine_.start();
        engine_.setWindowsModeEnabled(true);
        desk_.runLoop.drain();
        // Otherwise the writer's allocations would count as the callback's.
        static_cast<void>(store_.flush());
    }

    EventVerdict handle(const Event& event) { return tap_.handle(event); }
    void drain() { desk_.runLoop.drain(); }

private:
    memory::MemoryDesktop desk_;
    OpenTap tap_;
    test::CommandLog commands_;
    test::FakeOverlay overlay_{commands_};
    test::FakeClipboard clipboard_{commands_};
    test::FakeFinderMenu finderMenu_{commands_};
    test::ScratchFolder folder_;
    x11::X11PreferenceStore store_{folder_.at("preferences.plist"), [](std::string_view) {}};
    Preferences preferences_{store_};
    OrvelEngine engine_{
        {desk_.accessibilityPermission, desk_.accessibilityWindows, desk_.appControl,
         desk_.capsLock, desk_.eventPoster, tap_, desk_.fileSystem, desk_.haptics,
         desk_.inputSources, desk_.inputState, desk_.launcher, desk_.log, desk_.runLoop,
         desk_.screens, desk_.scriptRunner, desk_.taskRunner, desk_.workspace},
        {overlay_, clipboard_, finderMenu_},
        preferences_};
};

constexpr const char* kEditor = "com.apple.TextEdit";
constexpr const char* kFileManager = "com.apple.finder";

/// One iteration is a press and its release: the time stands for two events.
void measurePair(benchmark::State& state, const char* frontmost, const Event& first,
                 const Event& second, bool mayAllocate) {
    Session session(frontmost);
    session.handle(first);
    session.handle(second);
    session.drain();
    const std::size_t before = allocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(session.handle(first));
        benchmark::DoNotOptimize(session.handle(second));
        if (mayAllocate) session.drain();
    }
    const std::size_t made = allocationCount() - before;
    state.SetItemsProcessed(state.iterations() * 2);
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(made) / static_cast<double>(2 * state.iterations()));
    if (!mayAllocate && made != 0) state.SkipWithError("the pass path allocated");
}

void plainLetter(benchmark::State& state) {
    measurePair(state, kEditor, test::keyDown(key::a), test::keyUp(key::a), false);
}
void letterWithControl(benchmark::State& state) {
    measurePair(state, kEditor, test::keyDown(key::c, flag::control),
                test::keyUp(key::c, flag::control), true);
}
void modifier(benchmark::State& state) {
    measurePair(state, kEditor, test::flagsChanged(key::leftControl, flag::control | flag::shift),
                test::flagsChanged(key::leftControl, flag::shift), false);
}
void finderKey(benchmark::State& state) {
    measurePair(state, kFileManager, test::keyDown(key::returnKey), test::keyUp(key::returnKey),
                true);
}
void winCommand(benchmark::State& state) {
    measurePair(state, kEditor, test::keyDown(key::v, flag::command),
                test::keyUp(key::v, flag::command), true);
}
void wheelNotch(benchmark::State& state) {
    measurePair(state, kEditor, test::wheel(1, 10), test::wheel(-1, -10), false);
}

BENCHMARK(plainLetter)->Name("callback/plain letter");
BENCHMARK(letterWithControl)->Name("callback/letter with control");
BENCHMARK(modifier)->Name("callback/modifier");
BENCHMARK(finderKey)->Name("callback/file manager key");
BENCHMARK(winCommand)->Name("callback/win command");
BENCHMARK(wheelNotch)->Name("callback/wheel");

}  // namespace
}  // namespace orvel

BENCHMARK_MAIN();
