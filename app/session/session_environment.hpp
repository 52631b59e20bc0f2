#pragma once

#include <string>

namespace orvel::session {

/// What the environment says about the login session.
struct SessionEnvironment {
    std::string display;
    std::string waylandDisplay;
    std::string sessionType;

    [[nodiscard]] bool isWayland() const {
        return sessionType == "wayland" || !waylandDisplay.empty();
    }
};

[[nodiscard]] SessionEnvironment readEnvironment();

}  // namespace orvel::session
