#pragma once

#include "platform/event_poster.hpp"
#include "platform/event_tap.hpp"
#include "platform/input_state.hpp"

#include <map>

namespace orvel::macos {

/// The keys that applications see held although another one is pressed: what the tap put out for
/// a press that it rewrote. When the release never comes by, this lets go of them.
class HeldKeys {
public:
    /// Takes note of one key event and of what became of it.
    void note(const Event& came, const Event& left, EventVerdict verdict);
    /// The event as applications have to see it when the engine looks away, paused or switched off:
    /// a rewritten press is held, and released, as what it became.
    [[nodiscard]] Event asItWasPressed(Event event) const;
    /// Releases every rewritten key and tells applications the modifiers that are really down.
    void letGo(EventPoster& poster, const InputState& input);
    /// The same for keys whose release got lost.
    void letGoOfReleased(EventPoster& poster, const InputState& input);

private:
    template <typename Wanted>
    void release(EventPoster& poster, const InputState& input, Wanted wanted);

    std::map<KeyCode, KeyCode> outputOf_;  ///< by the key that is pressed
};

}  // namespace orvel::macos
