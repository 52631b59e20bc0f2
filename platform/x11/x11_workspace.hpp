#pragma once

#include "platform/workspace.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/icon_theme.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/window_manager.hpp"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Running applications are windows grouped by desktop entry; installed ones are desktop files.
/// The application in front bears the identifier of macOS when it plays that part.
class X11Workspace final : public Workspace {
public:
    X11Workspace(ClientWindows& clients, WindowManager& manager);

    [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication() const override;
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<std::string> applicationPath(
        std::string_view bundleId) const override;
    [[nodiscard]] std::string displayName(std::string_view path) const override;
    [[nodiscard]] Picture icon(std::string_view path) const override;
    void activate(ProcessId pid, int options) override;
    void terminate(ProcessId pid) override;

    /// Ends every process of the application without asking it, also one that hangs. What is not
    /// saved is lost.
    void forceTerminate(ProcessId pid);
    /// Tells after the windows of the session changed, and with them the running applications.
    [[nodiscard]] Subscription onRunningChange(std::function<void()> told);
    /// How the application in front wants to be spoken to.
    [[nodiscard]] ApplicationKind frontmostKind() const { return frontmostKind_; }
    [[nodiscard]] ServiceCheck check() const;

private:
    void frontChanged();

    ClientWindows& clients_;
    WindowManager& manager_;
    std::optional<FrontmostApplication> frontmost_;
    ApplicationKind frontmostKind_ = ApplicationKind::other;
    std::vector<Subscription> subscriptions_;
    IconTheme icons_;
    mutable std::map<std::string, Picture, std::less<>> pictures_;
    mutable std::int64_t lastSerial_ = 0;
};

}  // namespace orvel::x11
