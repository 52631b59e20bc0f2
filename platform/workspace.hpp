#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/picture.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

enum class ActivationPolicy {
    regular,  ///< has windows and an icon among the running applications
    accessory,
    prohibited,
};

struct RunningApplication {
    ProcessId pid = 0;
    std::optional<std::string> bundleId;
    std::string name;
    std::optional<std::string> path;
    ActivationPolicy policy = ActivationPolicy::regular;
    bool isActive = false;
    bool isHidden = false;
    bool isTerminated = false;
};

struct FrontmostApplication {
    ProcessId pid = 0;
    std::optional<std::string> bundleId;
};

/// How to bring an application to the front.
inline constexpr int kActivateIgnoringOtherApps = 2;

/// Running and installed applications. Main thread.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Answers from what the desktop already told, without waiting for it.
    [[nodiscard]] virtual std::optional<FrontmostApplication> frontmostApplication() const = 0;
    /// In the desktop's order.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;
    /// Where the application of that identifier is installed.
    [[nodiscard]] virtual std::optional<std::string> applicationPath(
        std::string_view bundleId) const = 0;
    /// The name shown to people, without the ending of application bundles.
    [[nodiscard]] virtual std::string displayName(std::string_view path) const = 0;
    [[nodiscard]] virtual Picture icon(std::string_view path) const = 0;
    /// `options` as in `kActivateIgnoringOtherApps`.
    virtual void activate(ProcessId pid, int options) = 0;
    virtual void terminate(ProcessId pid) = 0;
};

}  // namespace orvel
