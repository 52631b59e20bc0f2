#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/window_manager.hpp"
#include "platform/x11/x11_screens.hpp"

#include <optional>
#include <vector>

namespace orvel::x11 {

/// Windows through the window manager. What people see counts: frames belong to a window, drawn
/// shadows do not. No call waits for the application that owns the window or for the window
/// manager, so one that hangs costs nothing: a window reads as what it was asked to become until
/// that has been done.
class X11AccessibilityWindows final : public AccessibilityWindows {
public:
    X11AccessibilityWindows(WindowManager& manager, const ClientWindows& clients,
                            const X11Screens& screens);

    void setBudget(std::optional<std::chrono::milliseconds> budget) override;
    [[nodiscard]] std::optional<AxWindow> focusedWindow(ProcessId pid) const override;
    [[nodiscard]] std::optional<std::vector<AxWindow>> windows(ProcessId pid) const override;
    [[nodiscard]] AxWindowAttributes attributes(const AxWindow& window) const override;
    bool setPosition(const AxWindow& window, AxPoint position) override;
    bool setSize(const AxWindow& window, Size size) override;
    bool setMinimized(const AxWindow& window, bool minimized) override;
    bool raise(const AxWindow& window) override;
    bool setMain(const AxWindow& window, bool isMain) override;
    bool setFocused(const AxWindow& window, bool isFocused) override;

    /// The X window that an accessibility window names; none for one of another desktop.
    [[nodiscard]] static std::uint32_t windowId(const AxWindow& window);

private:
    [[nodiscard]] Deadline callDeadline() const;

    WindowManager& manager_;
    const ClientWindows& clients_;
    const X11Screens& screens_;
    std::optional<Deadline> budgetEnd_;
};

}  // namespace orvel::x11
