#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/file_replacement.hpp"

#include <string>
#include <sys/types.h>
#include <vector>

namespace orvel::x11 {

/// What a resident program lets others of the same user know.
struct RunningSession {
    std::string display;
    pid_t process = 0;
    bool isOn = false;      ///< the master switch
    bool isPaused = false;  ///< by the panic chord
};

/// The residents that run at this moment. One that died is not among them, however it ended. Not
/// for a resident: looking at its own note would give it up.
std::vector<RunningSession> runningSessions();

/// The note of the one resident of a display; it ends with the process. A process of its own
/// making does not inherit it.
class SessionNote {
public:
    /// Fails when another resident has the display, whose process it names, and when there is no
    /// place for notes.
    static Result<SessionNote> claim(const std::string& display);

    void update(bool isOn, bool isPaused) const;

private:
    SessionNote(std::string display, OwnedFd fd);

    std::string display_;
    OwnedFd fd_;
};

}  // namespace orvel::x11
