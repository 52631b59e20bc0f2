#pragma once

#include "platform/macos/mac_observation.hpp"

#include <functional>

namespace orvel::macos {

/// Hears that somebody outside wants to see the settings: a command, or a person who opens the
/// program again because the status icon is out of sight. Main thread; one at a time.
class SettingsRequests {
public:
    explicit SettingsRequests(std::function<void()> asked);
    ~SettingsRequests();
    SettingsRequests(const SettingsRequests&) = delete;
    SettingsRequests& operator=(const SettingsRequests&) = delete;

private:
    /// The application keeps its delegate without a reference.
    CfRef<CFTypeRef> delegate_;
    Observation notices_;
};

/// Asks the running program of this user.
void requestSettings();

}  // namespace orvel::macos
