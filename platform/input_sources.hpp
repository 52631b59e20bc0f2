#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

struct InputSource {
    std::string id;
    bool isKeyboard = false;
    /// Absent when the desktop does not tell.
    std::optional<bool> isAsciiCapable;
};

/// Keyboard layouts and input methods. Main thread.
class InputSources {
public:
    virtual ~InputSources() = default;

    /// Absent when it cannot be read.
    [[nodiscard]] virtual std::optional<InputSource> current() const = 0;
    /// Every source that can be selected, in the desktop's order; empty when none can be had.
    [[nodiscard]] virtual std::vector<InputSource> selectable() const = 0;
    virtual void select(std::string_view id) = 0;
};

}  // namespace orvel
