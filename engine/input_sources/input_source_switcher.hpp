#pragma once

#include "platform/caps_lock.hpp"
#include "platform/input_sources.hpp"
#include "platform/log.hpp"

namespace orvel {

/// Switches the input source and the Caps Lock state; every failure is one log line. Main thread.
class InputSourceSwitcher {
public:
    InputSourceSwitcher(InputSources& sources, CapsLock& capsLock, Log& log)
        : sources_(sources), capsLock_(capsLock), log_(log) {}

    /// Selects the first keyboard source that is not the current one. With two sources this
    /// alternates; with more it does not cycle.
    void toggleInputSourceViaTIS();
    /// Whether the current source cannot type ASCII; false when that cannot be read.
    [[nodiscard]] bool isCurrentInputChinese() const;
    void setCapsLockHardwareState(bool on);

private:
    InputSources& sources_;
    CapsLock& capsLock_;
    Log& log_;
};

}  // namespace orvel
