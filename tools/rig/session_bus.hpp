#pragma once

#include "tools/rig/child_process.hpp"

#include <memory>

namespace orvel::rig {

/// A message bus of its own for the applications of one desktop.
class SessionBus {
public:
    enum class Accessibility { off, on };

    /// With accessibility on, returns when toolkits find the accessibility bus.
    SessionBus(const Environment& environment, Accessibility accessibility);

    /// The given environment with the bus address set.
    const Environment& environment() const { return environment_; }

private:
    Environment environment_;
    ChildProcess daemon_;
    std::unique_ptr<ChildProcess> accessibility_;
};

}  // namespace orvel::rig
