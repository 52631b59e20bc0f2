#pragma once

#include "app/replay/replay_session.hpp"
#include "app/replay/step_problem.hpp"
#include "app/replay/step_reader.hpp"

#include <optional>

namespace orvel::replay {

/// Makes happen what the step says, without draining what it queues.
std::optional<StepProblem> runStep(const Step& step, ReplaySession& session);

}  // namespace orvel::replay
