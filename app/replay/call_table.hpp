#pragma once

#include "app/replay/calls.hpp"

#include <span>
#include <string_view>

namespace orvel::replay {

/// One operation that a `call` step can name.
struct CallRow {
    std::string_view op;
    CallReader read;  ///< null: this build has no such room
};

/// Every operation, in the order of the documentation.
std::span<const CallRow> callTable();

/// The name of the operation that picks an item of a menu: the one step that keeps a menu up.
inline constexpr std::string_view kMenuChoose = "menu.choose";

/// Runs the value of a `call` step.
std::optional<StepProblem> runCall(const Json& value, ReplaySession& session);

}  // namespace orvel::replay
