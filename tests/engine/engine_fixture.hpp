#pragma once

#include "app/preferences.hpp"
#include "engine/orvel_engine.hpp"
#include "tests/engine/fake_rooms.hpp"
#include "tests/support/effect_matchers.hpp"
#include "tests/support/memory_fixture.hpp"

#include <string>
#include <vector>

namespace orvel::test {

/// A running engine on a desktop in memory, with rooms above it that only take notes.
class EngineFixture : public MemoryFixture {
protected:
    CommandLog commands;
    FakeOverlay overlay{commands};
    FakeClipboard clipboard{commands};
    FakeFinderMenu finderMenu{commands};
    Preferences preferences{desk.preferenceStore};
    OrvelEngine engine{ports(), {overlay, clipboard, finderMenu}, preferences};

    void SetUp() override {
        engine.start();
        engine.setWindowsModeEnabled(true);
        drain();
        lookAway();
    }

    [[nodiscard]] CommandLog takeCommands() { return std::exchange(commands, {}); }
    [[nodiscard]] const EngineState& state() const { return engine.state(); }

    [[nodiscard]] OrvelEngine::Ports ports() {
        return {desk.accessibilityPermission,
                desk.accessibilityWindows,
                desk.appControl,
                desk.capsLock,
                desk.eventPoster,
                desk.eventTap,
                desk.fileSystem,
                desk.haptics,
                desk.inputSources,
                desk.inputState,
                desk.launcher,
                desk.log,
                desk.runLoop,
                desk.screens,
                desk.scriptRunner,
                desk.taskRunner,
                desk.workspace};
    }
};

}  // namespace orvel::test
