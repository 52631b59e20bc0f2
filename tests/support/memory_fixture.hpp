#pragma once

#include "platform/memory/memory_desktop.hpp"
#include "tests/support/event_builders.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::test {

/// A desktop in memory for one test: acts as the hardware and the world outside, and keeps what
/// the system did. Every act drains the run loop, so that "nothing happened" is certain.
class MemoryFixture : public ::testing::Test {
protected:
    memory::MemoryDesktop desk;

    void drain() { desk.runLoop.drain(); }
    void advance(double seconds) {
        desk.runLoop.drain();
        desk.runLoop.advance(Duration(std::llround(seconds * 1e6)));
    }

    /// One event arrives at the tap.
    void send(const Event& event) {
        desk.eventTap.deliver(event);
        drain();
    }
    void press(KeyCode keyCode, EventFlags flags = 0) { send(keyDown(keyCode, flags)); }
    void release(KeyCode keyCode, EventFlags flags = 0) { send(keyUp(keyCode, flags)); }
    void type(KeyCode keyCode, EventFlags flags = 0) {
        press(keyCode, flags);
        release(keyCode, flags);
    }

    /// Another process stores a setting.
    void prefer(std::string_view key, PreferenceValue value) {
        desk.preferenceStore.writeFromOutside(key, std::move(value));
    }
    void preferNothing(std::string_view key) {
        desk.preferenceStore.writeFromOutside(key, std::nullopt);
    }

    /// The effects since the last look, one line of JSON each, without their stamps.
    [[nodiscard]] std::vector<std::string> effects() {
        std::vector<std::string> lines;
        std::string_view text = desk.effects.text();
        while (!text.empty()) {
            const std::size_t length = text.find('\n');
            lines.push_back(withoutStamps(text.substr(0, length)));
            text.remove_prefix(length + 1);
        }
        desk.effects.clear();
        return lines;
    }
    /// Forgets the effects so far.
    void lookAway() { desk.effects.clear(); }

private:
    /// `{"step":3,"t":0,"log":"x"}` becomes `{"log":"x"}`.
    static std::string withoutStamps(std::string_view line) {
        const std::size_t time = line.find(",\"t\":");
        return "{" + std::string(line.substr(line.find(',', time + 1) + 1));
    }
};

}  // namespace orvel::test
