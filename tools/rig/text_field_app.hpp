#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/x_connection.hpp"

#include <optional>
#include <string>

namespace orvel::rig {

/// An application of a common toolkit with one text field.
class TextFieldApp {
public:
    enum class Kind { plain, password };

    /// Returns when the field has the keyboard.
    TextFieldApp(Kind kind, const Environment& environment, XConnection& x);

    WindowId window() const { return window_; }
    /// Waits for a text to be confirmed with Return and returns it as the field got it. Each
    /// call waits for the next one.
    std::optional<std::string> nextText();

private:
    ChildProcess process_;
    WindowId window_;
    std::size_t nextLine_ = 0;
};

}  // namespace orvel::rig
