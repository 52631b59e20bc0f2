#include "app/preference_keys.hpp"
#include "app/replay/replay_runner.hpp"
#include "platform/base/json.hpp"

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

// How many events a second a replay takes, with every card on: parsing, rules and transcript.

namespace orvel {
namespace {

constexpr std::int64_t kEvents = 100000;

void addSettings(std::string& steps) {
    JsonWriter pref;
    pref.beginObject().key("pref").beginObject();
    for (const PreferenceInfo& info : kPreferenceTable) {
        if (!info.cardTitle.empty()) pref.member(info.name, true);
    }
    steps += pref.endObject().endObject().text();
    steps += R"(
{"world": {"frontmost": "com.example.editor", "apps": [{"pid": 5, "bundleID": "com.example.editor"}]}}
{"call": "engine.start"}
{"call": {"op": "engine.setWindowsModeEnabled", "value": true}}
)";
}

/// Plain typing: nothing is rewritten, so that every rule looks at every key.
std::string typing() {
    std::string steps;
    addSettings(steps);
    for (std::int64_t i = 0; i < kEvents / 2; ++i) {
        const std::string key = std::to_string(i % 10);
        steps += R"({"event": {"type": "keyDown", "key": )" + key + "}}\n";
        steps += R"({"event": {"type": "keyUp", "key": )" + key + "}}\n";
    }
    return steps;
}

/// Physical Control and C: every event is rewritten.
std::string shortcuts() {
    std::string steps;
    addSettings(steps);
    for (std::int64_t i = 0; i < kEvents / 4; ++i) {
        steps += R"({"event": {"type": "flagsChanged", "key": 59, "flags": 262144}}
{"event": {"type": "keyDown", "key": 8, "flags": 262144}}
{"event": {"type": "keyUp", "key": 8, "flags": 262144}}
{"event": {"type": "flagsChanged", "key": 59, "flags": 0}}
)";
    }
    return steps;
}

/// A wheel with notches: every event is reversed.
std::string wheel() {
    std::string steps;
    addSettings(steps);
    for (std::int64_t i = 0; i < kEvents; ++i) {
        steps += R"({"event": {"type": "scrollWheel", "deltaAxis1": -1, "pointDeltaAxis1": -10}})"
                 "\n";
    }
    return steps;
}

void replay(benchmark::State& state, const std::string& steps) {
    for (auto _ : state) {
        std::istringstream in(steps);
        std::ostringstream out;
        std::ostringstream err;
        if (runReplay("bench", in, out, err) != 0) state.SkipWithError(err.str().c_str());
        benchmark::DoNotOptimize(out.str().size());
    }
    state.SetItemsProcessed(state.iterations() * kEvents);
}

void replayTyping(benchmark::State& state) { replay(state, typing()); }
void replayShortcuts(benchmark::State& state) { replay(state, shortcuts()); }
void replayWheel(benchmark::State& state) { replay(state, wheel()); }

BENCHMARK(replayTyping)->Unit(benchmark::kMillisecond);
BENCHMARK(replayShortcuts)->Unit(benchmark::kMillisecond);
BENCHMARK(replayWheel)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvel
