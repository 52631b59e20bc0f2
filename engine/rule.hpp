#pragma once

#include "engine/engine_decision.hpp"
#include "engine/engine_services.hpp"
#include "engine/engine_state.hpp"
#include "engine/key_ledger.hpp"
#include "platform/event.hpp"

#include <optional>
#include <string_view>

namespace orvel {

/// What a rule sees of one event.
struct RuleContext {
    const Event& incoming;
    /// What leaves the table when no rule decides; rules may change it for the ones after them.
    Event outgoing;
    /// The event's modifiers as the person means them.
    EventFlags logicalFlags = 0;
    EngineState& state;
    KeyLedger ledger;
    EngineServices& services;

    /// Win held: logical Control without Command and Option. Shift does not matter.
    [[nodiscard]] bool isWinHeld() const {
        return holds(logicalFlags, flag::control) &&
               !holdsAny(logicalFlags, flag::command | flag::option);
    }
    [[nodiscard]] bool isShiftHeld() const { return holds(logicalFlags, flag::shift); }
    [[nodiscard]] bool isKeyDown() const { return incoming.type == EventType::keyDown; }
    /// The event with another key and other flags.
    [[nodiscard]] EngineDecision rewritten(KeyCode keyCode, EventFlags flags) const;
    /// What becomes of the event when no rule decides: it leaves as `outgoing`.
    [[nodiscard]] EngineDecision undecided() const;
    [[nodiscard]] bool isFinderInFront() const;
};

/// Nothing: not mine, go on with the next rule.
using RuleOutcome = std::optional<EngineDecision>;

/// A named condition, read at the moment of use.
struct Gate {
    std::string_view name;
    bool (*isOpen)(const RuleContext&);
};

/// How the release of a key follows what its press became.
enum class Release {
    none,          ///< the rule decides about no press
    followsPress,  ///< the callback keeps the ledger
    ownBothEnds,   ///< the rule looks after the release itself
};

/// One row of the rule table.
struct Rule {
    std::string_view name;
    EventMask events;
    Gate gate;
    Release release;
    RuleOutcome (*apply)(RuleContext&);
};

}  // namespace orvel
