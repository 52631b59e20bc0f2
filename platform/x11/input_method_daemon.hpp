#pragma once

#include "platform/x11/input_method_board.hpp"

#include <chrono>
#include <cstdint>
#include <string>

namespace orvel::x11 {

/// How long a daemon may take for a plain question; one that takes longer counts as silent.
inline constexpr std::chrono::milliseconds kDaemonLimit{1000};
/// How long it may take to switch, since an engine may have to be started for that.
inline constexpr std::chrono::milliseconds kSwitchLimit{5000};
/// How often one that is silent is asked again.
inline constexpr std::chrono::milliseconds kSilentPause{2000};

/// The way to one input method daemon, which tells a board. Made, used and ended on one thread,
/// whose context the answers come on; nothing here waits for the daemon.
class InputMethodDaemon {
public:
    virtual ~InputMethodDaemon() = default;

    virtual void select(const EngineSelection& selection) = 0;
    /// Somebody may type soon: asks again for what the daemon does not tell by itself.
    virtual void refresh() = 0;
};

}  // namespace orvel::x11
