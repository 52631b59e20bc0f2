#pragma once

namespace orvel {

/// Whether this process may observe and post input. Main thread.
class AccessibilityPermission {
public:
    virtual ~AccessibilityPermission() = default;

    [[nodiscard]] virtual bool isTrusted() const = 0;
    /// Like `isTrusted`, and shows the system's prompt when not.
    [[nodiscard]] virtual bool isTrustedOrPrompt() = 0;
};

}  // namespace orvel
