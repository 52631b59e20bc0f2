#pragma once

#include "platform/memory/world.hpp"
#include "platform/text_caret.hpp"

namespace orvel::memory {

class MemoryTextCaret final : public TextCaret {
public:
    explicit MemoryTextCaret(const World& world) : world_(world) {}

    [[nodiscard]] std::optional<AxRect> caretRect() const override;

private:
    const World& world_;
};

}  // namespace orvel::memory
