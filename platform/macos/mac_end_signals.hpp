#pragma once

#include "platform/macos/mac_cf_ref.hpp"

#include <functional>
#include <vector>

namespace orvel::macos {

/// Turns the signals that ask a process to end into a call on the main queue, so that the way out
/// is the usual one. Lives as long as the process.
class EndSignals {
public:
    explicit EndSignals(std::function<void()> asked);

private:
    std::vector<CfRef<CFTypeRef>> sources_;
};

}  // namespace orvel::macos
