#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/macos/mac_observation.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace orvel::macos {

/// What the login session is doing at this moment.
struct SessionState {
    bool isInFront = true;  ///< false while another user's session has the screen
    bool isLocked = false;
    bool isSecureInput = false;  ///< some program takes what is typed for itself
    std::optional<ProcessId> secureInputOwner;

    bool operator==(const SessionState&) const = default;
};

SessionState readSession();
/// Whether what is typed now is for one program alone, as a password is. Nothing of it is kept.
bool isTypingSecret();

/// Tells that the session, its sleep or its permissions may have changed. The system's notices
/// come twice, late or in another order, so that whoever is told reads the state itself.
class SessionNotices {
public:
    explicit SessionNotices(std::function<void()> told);

private:
    std::vector<Observation> observations_;
};

}  // namespace orvel::macos
