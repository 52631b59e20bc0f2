#include "app/replay/step_actions.hpp"

#include "app/replay/call_table.hpp"
#include "app/replay/click_step.hpp"
#include "app/replay/event_reader.hpp"
#include "app/replay/query_table.hpp"
#include "app/replay/world_reader.hpp"

#include <cmath>

namespace orvel::replay {

namespace {

void runEvent(const JsonField& field, ReplaySession& session) {
    Event event;
    read(field, event);
    if (field.hasFailed()) return;
    session.application();
    session.desktop.eventTap.deliver(event);
}

void runAdvance(const JsonField& field, ReplaySession& session) {
    // Later than any replay needs, and far from where whole microseconds end.
    constexpr double latest = 1e12;
    double seconds = 0;
    read(field, seconds);
    if (field.hasFailed()) return;
    auto& loop = session.desktop.runLoop;
    const double end = static_cast<double>(loop.now().count()) / 1e6 + seconds;
    if (seconds < 0) return field.fail("must not be negative");
    if (end > latest) return field.fail("is out of range");
    session.application();
    loop.advance(Duration(std::llround(seconds * 1e6)));
}

void runSequence(const JsonField& field, ReplaySession& session, void (AppDelegate::*sequence)()) {
    const bool* flag = field.json().asBool();
    if (flag == nullptr || !*flag) return field.fail("must be true");
    (session.application().delegate().*sequence)();
}

}  // namespace

std::optional<StepProblem> runStep(const Step& step, ReplaySession& session) {
    const std::string_view name = kStepKeys[static_cast<std::size_t>(step.key)];
    Problem problem;
    std::optional<StepProblem> outcome;
    const JsonField field(step.value, name, problem);
    switch (step.key) {
        case StepKey::pref: applyPreferences(field, session.desktop); break;
        case StepKey::world: applyWorld(field, session.desktop); break;
        case StepKey::launch:
            runSequence(field, session, &AppDelegate::applicationDidFinishLaunching);
            break;
        case StepKey::terminate:
            runSequence(field, session, &AppDelegate::applicationWillTerminate);
            break;
        case StepKey::event: runEvent(field, session); break;
        case StepKey::advance: runAdvance(field, session); break;
        case StepKey::call: outcome = runCall(step.value, session); break;
        case StepKey::click: runClick(field, session); break;
        case StepKey::query: outcome = runQuery(step.value, session); break;
    }
    if (!problem.empty()) return StepProblem{.text = problem};
    return outcome;
}

}  // namespace orvel::replay
