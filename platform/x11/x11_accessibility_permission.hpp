#pragma once

#include "platform/accessibility_permission.hpp"

namespace orvel::x11 {

/// An X server lets every client observe and post input, so there is nothing to ask for. What can
/// stand in the way is told when the tap is made.
class X11AccessibilityPermission final : public AccessibilityPermission {
public:
    [[nodiscard]] bool isTrusted() const override { return true; }
    [[nodiscard]] bool isTrustedOrPrompt() override { return true; }
};

}  // namespace orvel::x11
