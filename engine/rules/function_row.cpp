#include "engine/rules/function_row.hpp"

namespace orvel::rules {

namespace {

RuleOutcome openByName(RuleContext& context, std::string_view application) {
    context.services.runLoop.post([&launcher = context.services.launcher, application] {
        launcher.openApplicationNamed(application);
    });
    return EngineDecision::swallow();
}

}  // namespace

RuleOutcome functionRow(RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    if (code == key::f3) return openByName(context, "Mission Control");
    if (code == key::f4) {
        // Alt+F4 closes windows, whatever the F-row does.
        if (holds(context.logicalFlags, flag::option)) return std::nullopt;
        return openByName(context, "Launchpad");
    }
    const auto mediaKey = mediaKeyOf(code);
    if (!mediaKey) return std::nullopt;
    context.services.mediaKeys.postMediaKey(*mediaKey);
    return EngineDecision::swallow();
}

}  // namespace orvel::rules
