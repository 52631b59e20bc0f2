#pragma once

#include "app/replay/json_field.hpp"
#include "app/replay/replay_session.hpp"

namespace orvel::replay {

/// Runs the value of a `click` step, or reports what is wrong with it.
void runClick(const JsonField& field, ReplaySession& session);

}  // namespace orvel::replay
