#include "engine/rules/fn_arrows.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvel::rules {

namespace {

enum class Movement { home, end, pageUp, pageDown };

struct MovementKey {
    KeyCode own;
    KeyCode withFn;
    Movement movement;
};

constexpr std::array kMovementKeys{
    MovementKey{key::home, key::leftArrow, Movement::home},
    MovementKey{key::end, key::rightArrow, Movement::end},
    MovementKey{key::pageUp, key::upArrow, Movement::pageUp},
    MovementKey{key::pageDown, key::downArrow, Movement::pageDown},
};

std::optional<Movement> movementOf(const RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    for (const MovementKey& row : kMovementKeys) {
        if (code == row.own) return row.movement;
        if (code == row.withFn && context.services.inputState.isKeyDown(key::fn)) {
            return row.movement;
        }
    }
    return std::nullopt;
}

bool isBrowserInFront(const RuleContext& context) {
    constexpr std::array<std::string_view, 4> browsers{"Safari", "Chrome", "edgemac", "firefox"};
    const auto front = context.services.workspace.frontmostApplication();
    if (!front || !front->bundleId) return false;
    return std::ranges::any_of(browsers, [&](std::string_view browser) {
        return front->bundleId->find(browser) != std::string::npos;
    });
}

/// Browsers know Home and End; elsewhere the system's line movements take their place.
EngineDecision moveInLine(const RuleContext& context, KeyCode inBrowser, KeyCode elsewhere,
                          EventFlags flags) {
    if (isBrowserInFront(context)) return context.rewritten(inBrowser, flags);
    return context.rewritten(elsewhere, flags | flag::command);
}

}  // namespace

RuleOutcome fnArrows(RuleContext& context) {
    const auto movement = movementOf(context);
    if (!movement) return std::nullopt;
    const EventFlags flags = context.logicalFlags & ~flag::secondaryFn;
    switch (*movement) {
        case Movement::home: return moveInLine(context, key::home, key::leftArrow, flags);
        case Movement::end: return moveInLine(context, key::end, key::rightArrow, flags);
        case Movement::pageUp: return context.rewritten(key::pageUp, flags);
        case Movement::pageDown: return context.rewritten(key::pageDown, flags);
    }
    return std::nullopt;
}

}  // namespace orvel::rules
