#pragma once

#include "platform/x11/service_check.hpp"
#include "platform/x11/x11_session.hpp"

#include <string>
#include <vector>

namespace orvel::x11 {

/// What the way of keys, buttons and the wheel finds in this session. Takes no device.
[[nodiscard]] std::vector<ServiceCheck> checkInput(X11Session& session, const std::string& fnKey);

}  // namespace orvel::x11
