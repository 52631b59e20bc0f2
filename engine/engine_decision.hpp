#pragma once

#include "platform/event.hpp"

namespace orvel {

/// What becomes of one event.
class EngineDecision {
public:
    enum class Kind { pass, modify, swallow };

    static EngineDecision pass() { return EngineDecision(Kind::pass, {}); }
    static EngineDecision swallow() { return EngineDecision(Kind::swallow, {}); }
    /// The event goes on as `rewritten`.
    static EngineDecision modify(const Event& rewritten) {
        return EngineDecision(Kind::modify, rewritten);
    }

    [[nodiscard]] Kind kind() const { return kind_; }
    /// Only for `modify`.
    [[nodiscard]] const Event& event() const { return event_; }

private:
    EngineDecision(Kind kind, const Event& event) : kind_(kind), event_(event) {}

    Kind kind_;
    Event event_;
};

}  // namespace orvel
