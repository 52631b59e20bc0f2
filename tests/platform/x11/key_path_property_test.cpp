#include "platform/x11/panic_chord.hpp"
#include "platform/x11/posted_keys.hpp"
#include "tests/platform/x11/key_path_fixture.hpp"

#include <array>
#include <random>
#include <set>

namespace orvel::x11::test {
namespace {

constexpr std::array kKeys{
    pc::a,         pc::c,           pc::tab,       pc::backspace,    pc::left,       pc::f2,
    pc::mute,      pc::capsLock,    pc::leftShift, pc::rightShift,   pc::leftAlt,    pc::rightAlt,
    pc::leftSuper, pc::leftControl, pc::menu,      pc::rightControl, pc::rightSuper, pc::returnKey};

/// An application that looks at what reaches it.
class Witness {
public:
    explicit Witness(const KeyMap& map) : map_(map) {}

    void see(Sent sent) {
        // The server ignores the release of a key that is up.
        if (!sent.down && !down_[sent.key]) return;
        EXPECT_NE(down_[sent.key], sent.down) << "a key that is down went down again: " << sent;
        down_[sent.key] = sent.down;
        const auto modifier = map_.modifierOf(sent.key);
        if (!modifier && sent.down && sent.key != map_.neutralKey()) checkModifiers();
        if (!modifier) {
            bareModifier_ = 0;
        } else if (sent.down) {
            bareModifier_ = sent.key;
        } else if (std::exchange(bareModifier_, XKeycode{0}) == sent.key) {
            ++bareTaps_;
        }
    }
    /// The modifiers that the next keys shall be seen with.
    void expect(std::optional<XModifiers> modifiers) { expected_ = modifiers; }
    [[nodiscard]] const XKeySet& down() const { return down_; }
    [[nodiscard]] int bareTaps() const { return bareTaps_; }
    [[nodiscard]] int checkedPresses() const { return checkedPresses_; }

private:
    void checkModifiers() {
        if (!expected_) return;
        XModifiers seen;
        for (int key = 1; key < 256; ++key) {
            const auto modifier = map_.modifierOf(static_cast<XKeycode>(key));
            if (modifier && down_[key]) seen.set(indexOf(*modifier));
        }
        EXPECT_EQ(seen, *expected_);
        ++checkedPresses_;
    }

    std::optional<XModifiers> expected_;
    int checkedPresses_ = 0;
    const KeyMap& map_;
    XKeySet down_;
    XKeycode bareModifier_ = 0;
    int bareTaps_ = 0;
};

/// Plays random input with random decisions, posted events, lost releases and unplugging.
class RandomSession {
public:
    RandomSession(unsigned seed, bool losesReleases)
        : map_(pcKeys(), seed % 2 == 0 ? "COMP" : ""),
          losesReleases_(losesReleases),
          random_(seed) {
        path_.setHandler([this](Event& event) { return decide(event); });
    }

    void step() {
        const DeviceKey key{chance(2) ? kFirstKeyboard : kSecondKeyboard,
                            kKeys[pick(kKeys.size())]};
        const std::size_t what = pick(20);
        if (what == 0) return unplug(key.device);
        if (what == 1) return post();
        if (what == 2) isOn_ = !isOn_;
        if (what == 3 && losesReleases_) {
            physical_.erase(key);
            return;
        }
        if (physical_.insert(key).second) return path_.handle({.key = key, .down = true});
        if (what < 9) return path_.handle({.key = key, .down = true, .isRepeat = true});
        physical_.erase(key);
        path_.handle({.key = key});
    }
    void unplug(int device) {
        std::erase_if(physical_, [device](DeviceKey key) { return key.device == device; });
        path_.releaseDevice(device);
    }
    /// Everything physical comes up, and posted modifiers are let go.
    void releaseEverything() {
        physical_.clear();
        for (const XKeycode key : kKeys) {
            path_.handle({.key = {kFirstKeyboard, key}});
            path_.handle({.key = {kSecondKeyboard, key}});
        }
        const std::array flags{PostedKey{EventType::flagsChanged, key::leftCommand, flag::none}};
        posted_.post(flags);
    }
    void checkNothingIsHeld() const {
        EXPECT_TRUE(ledger_.down().none()) << ledger_.down();
        EXPECT_EQ(witness_.down(), ledger_.down());
        EXPECT_TRUE(state_.isEmpty());
    }
    [[nodiscard]] int checkedPresses() const { return witness_.checkedPresses(); }

private:
    std::size_t pick(std::size_t count) { return random_() % count; }
    bool chance(std::size_t count) { return pick(count) == 0; }
    EventFlags randomFlags() {
        constexpr std::array flags{flag::shift, flag::control, flag::option, flag::command};
        EventFlags chosen = 0;
        for (const EventFlags one : flags) chosen |= chance(3) ? one : 0;
        return chosen;
    }
    XModifiers heldModifiers() const {
        XModifiers held;
        for (const int device : {kFirstKeyboard, kSecondKeyboard}) {
            for (const DeviceKey& key : state_.keysOf(device)) {
                const auto modifier = map_.modifierOf(key.keycode);
                if (modifier) held.set(indexOf(*modifier));
            }
        }
        return held;
    }
    EventVerdict decide(Event& event) {
        const bool isKey = event.type == EventType::keyDown;
        if (isOn_ && chance(4)) post();
        witness_.expect(std::nullopt);
        if (!isOn_ || chance(3)) {
            if (isKey) witness_.expect(heldModifiers());
            return EventVerdict::pass;
        }
        if (chance(3)) return EventVerdict::swallow;
        event.flags = randomFlags();
        if (isKey) witness_.expect(modifiersForFlags(event.flags));
        if (event.type == EventType::flagsChanged) {
            constexpr std::array keys{key::leftCommand, key::leftControl, key::leftOption};
            event.keyCode = keys[pick(keys.size())];
        } else if (chance(2)) {
            event.keyCode = map_.keyCodeOf(kKeys[pick(6)]);
        }
        return EventVerdict::modify;
    }
    void post() {
        const KeyCode code = map_.keyCodeOf(kKeys[pick(6)]);
        const EventFlags flags = randomFlags();
        witness_.expect(modifiersForFlags(flags));
        const std::array keys{PostedKey{EventType::keyDown, code, flags},
                              PostedKey{EventType::keyUp, code, std::nullopt},
                              PostedKey{EventType::flagsChanged, key::leftCommand, flag::none}};
        EXPECT_TRUE(posted_.post(keys));
        witness_.expect(std::nullopt);
    }

    KeyMap map_;
    bool losesReleases_;
    std::mt19937 random_;
    bool isOn_ = true;
    Witness witness_{map_};
    HidState state_;
    std::set<DeviceKey> physical_;
    OutputLedger ledger_{map_, [this](XKeycode key, bool down) { witness_.see({key, down}); }};
    KeyPath path_{map_, state_, ledger_};
    PostedKeys posted_{map_, state_, ledger_};
};

void playManySessions(bool losesReleases) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        RandomSession session(seed, losesReleases);
        for (int round = 0; round < 10; ++round) {
            for (int i = 0; i < 100; ++i) session.step();
            session.releaseEverything();
            session.checkNothingIsHeld();
        }
        ASSERT_GT(session.checkedPresses(), 50);
        if (testing::Test::HasFailure()) return;
    }
}

TEST(KeyPathProperty, NothingHeldInTheInputMeansNothingHeldInTheOutput) { playManySessions(false); }

TEST(KeyPathProperty, AlsoWhenReleasesWereLost) { playManySessions(true); }

/// Rewrites and swallows ordinary keys only, and modifiers never tapped alone.
TEST(KeyPathBareTaps, NoModifierLooksTappedUnlessTheUserTappedIt) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        const KeyMap map(pcKeys());
        Witness witness(map);
        HidState state;
        OutputLedger ledger(map, [&](XKeycode key, bool down) { witness.see({key, down}); });
        KeyPath path(map, state, ledger);
        std::mt19937 random(seed);
        path.setHandler([&](Event& event) {
            if (event.type == EventType::flagsChanged) return EventVerdict::pass;
            event.flags = random() % 2 == 0 ? flag::command : flag::option | flag::shift;
            return random() % 2 == 0 ? EventVerdict::swallow : EventVerdict::modify;
        });
        constexpr std::array modifiers{pc::leftAlt, pc::leftSuper, pc::leftShift};
        for (int i = 0; i < 50; ++i) {
            const DeviceKey modifier{kFirstKeyboard, modifiers[random() % modifiers.size()]};
            path.handle({.key = modifier, .down = true});
            path.handle({.key = {kFirstKeyboard, pc::tab}, .down = true});
            if (random() % 2 == 0) path.handle({.key = modifier});
            path.handle({.key = {kFirstKeyboard, pc::tab}});
            if (state.isDown(modifier)) path.handle({.key = modifier});
        }
        EXPECT_EQ(witness.bareTaps(), 0) << "seed " << seed;
        EXPECT_TRUE(ledger.down().none());
    }
}

TEST(PanicChord, IsStruckOnceEachTimeTheThreeKeysAreHeld) {
    HidState state;
    PanicChord chord;
    state.press({kFirstKeyboard, pc::backspace}, key::backspace);
    EXPECT_FALSE(chord.isStruckBy(state));
    state.press({kSecondKeyboard, pc::escape}, key::escape);
    EXPECT_FALSE(chord.isStruckBy(state));
    state.press({kFirstKeyboard, pc::returnKey}, key::returnKey);
    EXPECT_TRUE(chord.isStruckBy(state));
    EXPECT_FALSE(chord.isStruckBy(state));
    state.release({kFirstKeyboard, pc::returnKey});
    EXPECT_FALSE(chord.isStruckBy(state));
    state.press({kFirstKeyboard, pc::returnKey}, key::returnKey);
    EXPECT_TRUE(chord.isStruckBy(state));
}

}  // namespace
}  // namespace orvel::x11::test
