#pragma once

#include "app/replay/json_field.hpp"
#include "app/replay/replay_session.hpp"
#include "app/replay/step_problem.hpp"

#include <functional>
#include <optional>

namespace orvel::replay {

/// Does what a call asks for; says so when an argument names something that does not exist.
using Call = std::function<std::optional<StepProblem>(ReplaySession&)>;

/// Reads the arguments of a call. The call runs only when they were right.
using CallReader = Call (*)(ObjectReader& arguments);

/// A call that cannot go wrong once its arguments were read.
template <typename Action>
Call always(Action action) {
    return [action = std::move(action)](ReplaySession& session) -> std::optional<StepProblem> {
        action(session);
        return std::nullopt;
    };
}

// The readers of every room's calls, by the names of the operations.

Call engineStart(ObjectReader& arguments);
Call engineToggleInputSource(ObjectReader& arguments);
Call engineIsCurrentInputChinese(ObjectReader& arguments);
Call engineSetWindowsModeEnabled(ObjectReader& arguments);
Call engineSetPaused(ObjectReader& arguments);
Call engineSetMouseSideButtonEnabled(ObjectReader& arguments);
Call engineSetAltMenuEnabled(ObjectReader& arguments);
Call engineSetCapsLockHardwareState(ObjectReader& arguments);
Call enginePostKeystroke(ObjectReader& arguments);
Call enginePostMediaKey(ObjectReader& arguments);
Call engineSnapActiveWindow(ObjectReader& arguments);

Call statusItemClick(ObjectReader& arguments);

Call menuChoose(ObjectReader& arguments);

Call settingsAppear(ObjectReader& arguments);
Call settingsSetCard(ObjectReader& arguments);
Call settingsSetMaster(ObjectReader& arguments);
Call settingsSetMap(ObjectReader& arguments);
Call settingsSetDelete(ObjectReader& arguments);

}  // namespace orvel::replay
