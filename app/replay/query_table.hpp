#pragma once

#include "app/replay/replay_session.hpp"
#include "app/replay/step_problem.hpp"

#include <string_view>

namespace orvel::replay {

/// Writes the state that a `query` step asks for.
using QueryWriter = void (*)(ReplaySession& session, JsonWriter& out);

/// One state that a `query` step can name.
struct QueryRow {
    std::string_view name;
    QueryWriter write;  ///< null: this build has no such room
};

/// Runs the value of a `query` step: its effect is the state.
std::optional<StepProblem> runQuery(const Json& value, ReplaySession& session);

// The writers of every room's states.

void writeEngineState(ReplaySession& session, JsonWriter& out);
void writePreferencesState(ReplaySession& session, JsonWriter& out);
void writeWindowsState(ReplaySession& session, JsonWriter& out);
void writeSettingsState(ReplaySession& session, JsonWriter& out);
void writeMonitorsState(ReplaySession& session, JsonWriter& out);

}  // namespace orvel::replay
