#pragma once

#include "engine/engine_state.hpp"

#include <optional>

namespace orvel {

/// Pairs presses with releases: what a press became, its release becomes, whatever settings or
/// applications did in between.
class KeyLedger {
public:
    explicit KeyLedger(EngineState& state) : state_(state) {}

    void recordSwallowed(KeyCode code) { state_.swallowedKeys.insert(code); }
    void recordRemap(KeyCode code, RemapTarget target) { state_.activeRemaps[code] = target; }

    [[nodiscard]] bool isSwallowed(KeyCode code) const {
        return !state_.swallowedKeys.empty() && state_.swallowedKeys.contains(code);
    }
    [[nodiscard]] std::optional<RemapTarget> remap(KeyCode code) const;

    /// Drops both entries of a key.
    void forget(KeyCode code);

private:
    EngineState& state_;
};

}  // namespace orvel
