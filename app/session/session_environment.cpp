#include "app/session/session_environment.hpp"

#include <cstdlib>

namespace orvel::session {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

SessionEnvironment readEnvironment() {
    return {.display = variable("DISPLAY"),
            .waylandDisplay = variable("WAYLAND_DISPLAY"),
            .sessionType = variable("XDG_SESSION_TYPE")};
}

}  // namespace orvel::session
