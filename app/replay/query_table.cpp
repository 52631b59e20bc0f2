#include "app/replay/query_table.hpp"

#include "app/replay/json_field.hpp"

#include <algorithm>
#include <array>

namespace orvel::replay {

namespace {

constexpr QueryWriter kNotBuilt = nullptr;

constexpr std::array kQueries{
    QueryRow{"engine", writeEngineState}, QueryRow{"prefs", writePreferencesState},
    QueryRow{"overlay", kNotBuilt},       QueryRow{"clipboard", kNotBuilt},
    QueryRow{"taskbar", kNotBuilt},       QueryRow{"windows", writeWindowsState},
    QueryRow{"startMenu", kNotBuilt},     QueryRow{"settings", writeSettingsState},
    QueryRow{"finderMenu", kNotBuilt},    QueryRow{"monitors", writeMonitorsState},
};

}  // namespace

std::optional<StepProblem> runQuery(const Json& value, ReplaySession& session) {
    const std::string* name = value.asString();
    if (name == nullptr) return StepProblem{.text = "query: must be a text"};
    const auto row = std::find_if(kQueries.begin(), kQueries.end(),
                                  [name](const QueryRow& query) { return query.name == *name; });
    if (row == kQueries.end()) {
        return StepProblem{.text = "query: " + inQuotes(*name) + " is no state"};
    }
    if (row->write == kNotBuilt) return notAvailable("query " + *name);
    session.application();
    auto effect = session.desktop.effects.effect("state");
    row->write(session, *effect);
    return std::nullopt;
}

}  // namespace orvel::replay
