#pragma once

#include "platform/base/result.hpp"

#include <string>

namespace orvel::x11 {

/// A small process that outlives us: when we die in any way, or hang, it ends what is left of us
/// and releases every key and button of the synthetic devices. The devices themselves the server
/// gives back when our connection ends.
class GuardProcess {
public:
    /// Forks. To be called before this process has threads or a connection to a display; `display`
    /// is the one to watch, $DISPLAY when empty.
    static Result<GuardProcess> start(const std::string& display = {});

    GuardProcess(GuardProcess&& other) noexcept;
    GuardProcess& operator=(GuardProcess&&) = delete;
    /// Tells the guard that nothing is left to release, and waits for its end.
    ~GuardProcess();

    /// To be called from the run loop every `kHeartbeatInterval`. False when the guard is gone.
    bool beat();
    [[nodiscard]] int processId() const { return process_; }

private:
    GuardProcess(int pipe, int process) : pipe_(pipe), process_(process) {}

    int pipe_;
    int process_;
};

}  // namespace orvel::x11
