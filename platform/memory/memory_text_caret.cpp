#include "platform/memory/memory_text_caret.hpp"

namespace orvel::memory {

std::optional<AxRect> MemoryTextCaret::caretRect() const {
    return world_.isTrusted ? world_.caret : std::nullopt;
}

}  // namespace orvel::memory
