#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/x_connection.hpp"

namespace orvel::rig {

/// A compositing manager of the distribution, without shadows and fading: every picture of the
/// screen is what it will stay.
class Compositor {
public:
    /// Returns when the windows are its own to paint.
    Compositor(const Environment& environment, XConnection& x);

private:
    ChildProcess process_;
};

}  // namespace orvel::rig
