#include "engine/key_ledger.hpp"

namespace orvel {

std::optional<RemapTarget> KeyLedger::remap(KeyCode code) const {
    const auto found = state_.activeRemaps.find(code);
    if (found == state_.activeRemaps.end()) return std::nullopt;
    return found->second;
}

void KeyLedger::forget(KeyCode code) {
    state_.swallowedKeys.erase(code);
    state_.activeRemaps.erase(code);
}

}  // namespace orvel
