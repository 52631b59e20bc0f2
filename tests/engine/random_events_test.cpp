#include "tests/engine/engine_fixture.hpp"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <string_view>

namespace orvel::test {
namespace {

using ::testing::IsEmpty;

constexpr std::array<std::pair<KeyCode, EventFlags>, 5> kModifierKeys{{
    {key::leftShift, flag::shift},
    {key::leftControl, flag::control},
    {key::leftOption, flag::option},
    {key::leftCommand, flag::command},
    {key::fn, flag::secondaryFn},
}};

constexpr std::array kKeys{
    key::a,         key::c,          key::v,       key::x,         key::s,      key::d,
    key::i,         key::y,          key::digit1,  key::tab,       key::escape, key::returnKey,
    key::backspace, key::f2,         key::f3,      key::f4,        key::f5,     key::f12,
    key::home,      key::leftArrow,  key::upArrow, key::downArrow, key::grave,  key::forwardDelete,
    key::l,         key::keypadEnter};

constexpr std::array<std::string_view, 5> kTargets{"Ctrl", "Win", "Alt", "Cmd", "原按键"};

/// A person at the keyboard whose settings, applications and panels change at any moment, and
/// some of whose releases get lost on the way.
class RandomPerson : public EngineFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        EngineFixture::SetUp();
        random.seed(GetParam());
        desk.world.inputSources = {{{"a", true, true}, true}, {{"b", true, false}, true}};
        desk.world.currentInputSource = "b";
    }

    std::size_t below(std::size_t limit) { return random() % limit; }
    bool chance(unsigned percent) { return below(100) < percent; }

    void act() {
        switch (below(12)) {
            case 0: return changeModifier(below(kModifierKeys.size()));
            case 1: return changeModifier(below(kModifierKeys.size()));
            case 2: return changeSetting();
            case 3: return changeWorld();
            case 4: return repeatSomething();
            case 5: return mouse();
            default: return changeKey(kKeys[below(kKeys.size())]);
        }
    }

    void changeModifier(std::size_t index) {
        const auto [code, modifier] = kModifierKeys[index];
        flags ^= modifier;
        send(flagsChanged(code, flags));
    }
    void changeKey(KeyCode code) {
        if (held.erase(code) == 0) {
            held.insert(code);
            press(code, flags);
        } else if (chance(90)) {
            release(code, flags);
        }
    }
    void repeatSomething() {
        if (!held.empty()) send(keyRepeat(*held.begin(), flags));
    }
    void changeSetting() {
        const auto& info =
            kPreferenceTable[below(static_cast<std::size_t>(PreferenceKey::launchAtLogin))];
        if (info.type == PreferenceType::boolean) {
            prefer(info.name, chance(70));
        } else if (info.name.starts_with("map_")) {
            prefer(info.name, std::string(kTargets[below(kTargets.size())]));
        } else if (info.name == "delete_strategy") {
            prefer(info.name, std::string(chance(50) ? "组合键" : "牺牲单键"));
        } else {
            preferNothing(info.name);
        }
    }
    void changeWorld() {
        static constexpr std::array<const char*, 3> fronts{"com.apple.finder", "com.apple.Safari",
                                                           "com.apple.TextEdit"};
        switch (below(6)) {
            case 0: return engine.setPaused(chance(20));
            case 1: return engine.setWindowsModeEnabled(chance(90));
            case 2: overlay.clipboardShows = chance(30); return;
            case 3: overlay.startMenuShows = chance(30); return;
            case 4: return advance(0.3);
            default: desk.world.frontmost = fronts[below(fronts.size())]; return;
        }
    }
    void mouse() {
        const auto button = static_cast<std::int64_t>(2 + below(3));
        send(buttonDown(button, flags));
        send(buttonUp(button, flags));
        send(wheel(1, 10));
    }

    void letGoOfEverything() {
        engine.setPaused(false);
        engine.setWindowsModeEnabled(true);
        overlay.clipboardShows = false;
        for (const KeyCode code : kKeys) release(code, flags);
        held.clear();
        for (std::size_t i = 0; i < kModifierKeys.size(); ++i) {
            if (holds(flags, kModifierKeys[i].second)) changeModifier(i);
        }
        advance(1);
    }

    std::mt19937 random;
    EventFlags flags = 0;
    std::set<KeyCode> held;
};

TEST_P(RandomPerson, LeavesNothingBehindOnceEverythingIsReleased) {
    for (int round = 0; round < 40; ++round) {
        for (int i = 0; i < 100; ++i) act();
        letGoOfEverything();
        lookAway();
        EXPECT_THAT(state().swallowedKeys, IsEmpty());
        EXPECT_THAT(state().activeRemaps, IsEmpty());
        EXPECT_FALSE(state().pendingShowDesktop);
        EXPECT_FALSE(state().isWinKeyStandaloneDown);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPerson, ::testing::Range(1U, 13U));

}  // namespace
}  // namespace orvel::test
