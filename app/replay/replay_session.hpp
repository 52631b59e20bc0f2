#pragma once

#include "app/application.hpp"
#include "platform/memory/memory_desktop.hpp"

#include <optional>

namespace orvel::replay {

/// One run of the whole system on a desktop in memory.
class ReplaySession {
public:
    ReplaySession() = default;
    ReplaySession(const ReplaySession&) = delete;
    ReplaySession& operator=(const ReplaySession&) = delete;
    /// Tearing everything down is no part of the transcript.
    ~ReplaySession() { desktop.effects.mute(); }

    memory::MemoryDesktop desktop;

    /// Built on first use, so that settings written before are there when saved state is loaded.
    Application& application() {
        if (!application_) application_.emplace(desktop.ports());
        return *application_;
    }

private:
    std::optional<Application> application_;
};

}  // namespace orvel::replay
