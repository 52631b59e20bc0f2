// What recording adds to an event, with every setting stored and a long clipboard history among
// them.

#include "app/preferences.hpp"
#include "app/record/recorder.hpp"
#include "platform/memory/memory_run_loop.hpp"
#include "platform/x11/x11_preference_store.hpp"
#include "tests/support/event_builders.hpp"
#include "tests/support/scratch_home.hpp"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <sstream>
#include <string>

namespace orvel {
namespace {

class OpenSecrecy final : public TypedSecrecy {
public:
    [[nodiscard]] InputTicket current() const override { return 0; }
    [[nodiscard]] Secrecy of(InputTicket) const override { return Secrecy::open; }
};

void recordAnEvent(benchmark::State& state) {
    const test::ScratchFolder folder;
    x11::X11PreferenceStore store(folder.at("preferences.plist"), [](std::string_view) {});
    Preferences preferences(store);
    for (std::size_t i = 0; i < kFeatureCardCount; ++i) {
        preferences.setBool(kPreferenceTable[i].key, true);
    }
    preferences.setData(PreferenceKey::clipboardHistory, PreferenceData(1'000'000));
    if (!store.flush()) std::abort();
    store.changesFd();
    store.refresh();
    memory::EffectLog effects;
    memory::MemoryRunLoop runLoop(effects);
    const OpenSecrecy secrecy;
    std::ostringstream out;
    Recorder recorder(out, {.runLoop = runLoop,
                            .secrecy = secrecy,
                            .frontmostApplication = [] { return std::string("editor"); },
                            .settings = store});
    recorder.begin();
    for ([[maybe_unused]] const auto iteration : state) {
        Event event = test::keyDown(key::a);
        benchmark::DoNotOptimize(recorder.record(event, [](Event&) { return EventVerdict::pass; }));
        out.str({});
    }
}
BENCHMARK(recordAnEvent)->Name("record/an event");

}  // namespace
}  // namespace orvel
