#pragma once

#include "tools/rig/physical_key.hpp"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace orvel::rig {

/// One event as an application received it. What an event kind does not have stays 0.
struct ProbeEvent {
    enum class Kind {
        keyPress,
        keyRelease,
        buttonPress,
        buttonRelease,
        motion,
        scroll,  ///< distance from scroll axes, as toolkits compute it
        focusIn,
        focusOut,
    };

    Kind kind{};
    int device = 0;          ///< the master device it came through
    int source = 0;          ///< the device that made it
    int detail = 0;          ///< keycode or button; for focus changes the mode
    unsigned modifiers = 0;  ///< as before the event
    int group = 0;
    bool repeat = false;    ///< the server's own repetition of a held key
    bool emulated = false;  ///< made by the server from scroll distance, or the other way round
    double down = 0;        ///< scroll: notches
    double right = 0;
    int x = 0;  ///< on the screen
    int y = 0;
    std::uint64_t serverMs = 0;   ///< the server's time stamp
    std::int64_t receivedUs = 0;  ///< CLOCK_MONOTONIC at the application
    std::string keysym;           ///< its name, "" where there is none
    std::string text;             ///< what an input field would add

    PhysicalKey key() const { return PhysicalKey(detail); }
};

/// The event as one line, and back. Nothing for a line that is no event.
std::string toLine(const ProbeEvent& event);
std::optional<ProbeEvent> fromLine(const std::string& line);

/// Short form for failure messages: "press a", "release Shift_L".
std::ostream& operator<<(std::ostream& out, const ProbeEvent& event);

}  // namespace orvel::rig
