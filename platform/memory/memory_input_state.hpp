#pragma once

#include "platform/input_state.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

class MemoryInputState final : public InputState {
public:
    explicit MemoryInputState(const World& world) : world_(world) {}

    [[nodiscard]] EventFlags hidFlags() const override { return world_.hidFlags; }
    [[nodiscard]] bool isKeyDown(KeyCode keyCode) const override;
    [[nodiscard]] ScreenPoint pointerLocation() const override { return world_.mouse; }

private:
    const World& world_;
};

}  // namespace orvel::memory
