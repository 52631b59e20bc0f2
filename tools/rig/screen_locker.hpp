#pragma once

#include "tools/rig/child_process.hpp"

#include <optional>
#include <string>

namespace orvel::rig {

/// A screen locker that holds keyboard and pointer while it lives.
class ScreenLocker {
public:
    /// Returns when the screen is locked.
    explicit ScreenLocker(const Environment& environment);

    /// Waits for a password to be confirmed with Return and returns it as the locker got it.
    /// Each call waits for the next one.
    std::optional<std::string> nextPassword();
    /// Gives the grabs back and returns when they are gone.
    void unlock();

private:
    ChildProcess process_;
    std::size_t nextLine_ = 0;
};

}  // namespace orvel::rig
