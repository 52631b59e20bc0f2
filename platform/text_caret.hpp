#pragma once

#include "platform/base/geometry.hpp"

#include <optional>

namespace orvel {

/// The insertion point of the focused text element. Main thread; answers within a time limit.
class TextCaret {
public:
    virtual ~TextCaret() = default;

    /// Absent when nothing with a caret is focused or it cannot be read.
    [[nodiscard]] virtual std::optional<AxRect> caretRect() const = 0;
};

}  // namespace orvel
