#pragma once

#include "platform/memory/world.hpp"
#include "platform/window_list.hpp"

namespace orvel::memory {

class MemoryWindowList final : public WindowList {
public:
    explicit MemoryWindowList(const World& world) : world_(world) {}

    [[nodiscard]] std::vector<WindowInfo> windows(WindowListScope scope) const override;

private:
    const World& world_;
};

}  // namespace orvel::memory
