#include "app/preferences.hpp"
#include "platform/x11/x11_preference_store.hpp"
#include "tests/support/scratch_home.hpp"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string_view>

// What a read of a setting costs, from the real store over a file with every setting in it.

namespace orvel {
namespace {

class StoredSettings : public benchmark::Fixture {
public:
    void SetUp(benchmark::State&) override {
        folder_ = std::make_unique<test::ScratchFolder>();
        store = std::make_unique<x11::X11PreferenceStore>(folder_->at("preferences.plist"),
                                                          [](std::string_view) {});
        preferences = std::make_unique<Preferences>(*store);
        for (std::size_t i = 0; i < kFeatureCardCount; ++i) {
            preferences->setBool(kPreferenceTable[i].key, true);
        }
        preferences->setString(PreferenceKey::mapCtrl, "Cmd");
        preferences->setData(PreferenceKey::clipboardHistory, PreferenceData(100'000));
        if (!store->flush()) std::abort();
        store->changesFd();
        store->refresh();
    }
    void TearDown(benchmark::State&) override {
        preferences.reset();
        store.reset();
        folder_.reset();
    }

protected:
    std::unique_ptr<x11::X11PreferenceStore> store;
    std::unique_ptr<Preferences> preferences;

private:
    std::unique_ptr<test::ScratchFolder> folder_;
};

BENCHMARK_F(StoredSettings, ReadAFlag)(benchmark::State& state) {
    for ([[maybe_unused]] const auto iteration : state) {
        benchmark::DoNotOptimize(preferences->boolForKey(PreferenceKey::cardSnap));
    }
}

BENCHMARK_F(StoredSettings, ReadAnAbsentFlag)(benchmark::State& state) {
    for ([[maybe_unused]] const auto iteration : state) {
        benchmark::DoNotOptimize(preferences->boolForKey(PreferenceKey::launchAtLogin));
    }
}

BENCHMARK_F(StoredSettings, ReadAText)(benchmark::State& state) {
    for ([[maybe_unused]] const auto iteration : state) {
        benchmark::DoNotOptimize(preferences->stringForKey(PreferenceKey::mapCtrl));
    }
}

/// Once for each wake-up of the run loop.
BENCHMARK_F(StoredSettings, LookForChangesWhereThereAreNone)(benchmark::State& state) {
    for ([[maybe_unused]] const auto iteration : state) store->refresh();
}

/// What the thread of the keyboard spends; the disk is another thread's business.
BENCHMARK_F(StoredSettings, WriteAFlag)(benchmark::State& state) {
    bool isOn = false;
    for ([[maybe_unused]] const auto iteration : state) {
        preferences->setBool(PreferenceKey::cardFkeys, isOn = !isOn);
    }
}

}  // namespace
}  // namespace orvel
