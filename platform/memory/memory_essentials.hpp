#pragma once

#include "platform/essentials.hpp"

namespace orvel::memory {

class MemoryEssentials final : public Essentials {
public:
    [[nodiscard]] std::vector<EssentialFinding> check() override { return findings; }

    /// What is found from now on.
    std::vector<EssentialFinding> findings{{Essential::keyboard, true}};
};

}  // namespace orvel::memory
