#pragma once

#include "engine/engine_decision.hpp"
#include "engine/engine_services.hpp"
#include "engine/engine_state.hpp"

namespace orvel {

/// Decides about one event: walks the rule table until a rule decides, and keeps the ledger of
/// what presses became. Main thread; returns at once.
EngineDecision orvelEventCallback(const Event& event, EngineState& state, EngineServices& services);

}  // namespace orvel
