#pragma once

#include "platform/memory/world.hpp"
#include "platform/screens.hpp"

namespace orvel::memory {

class MemoryScreens final : public Screens {
public:
    explicit MemoryScreens(const World& world) : world_(world) {}

    [[nodiscard]] std::vector<Screen> screens() const override { return world_.screens; }

private:
    const World& world_;
};

}  // namespace orvel::memory
