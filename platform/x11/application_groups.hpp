#pragma once

#include "platform/accessibility_windows.hpp"
#include "platform/x11/application_index.hpp"
#include "platform/x11/application_table.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvel::x11 {

/// What a window is for, as its type says.
enum class WindowKind { normal, dialog, utility, desktop, dock, other };

/// A window that the window manager manages.
struct ClientWindow {
    std::uint32_t id = 0;
    /// 0 when neither the server nor the window tells.
    ProcessId process = 0;
    WindowIdentity identity;
    WindowKind kind = WindowKind::normal;
    bool skipsTaskbar = false;
    bool operator==(const ClientWindow&) const = default;
};

/// A running application: the windows that belong together.
struct ApplicationGroup {
    /// Names the application in the ports. It is the process of its oldest window, or a negative
    /// number when that process has windows of several applications or is not known.
    ProcessId handle = 0;
    /// The process of its oldest window; 0 when not known.
    ProcessId process = 0;
    /// Identifier of the desktop file, else the windows' class or the program's name, else empty.
    std::string bundleId;
    /// Like `bundleId`, but the identifier of macOS for an application that plays its part.
    std::string frontmostId;
    std::string name;
    /// The desktop file; empty without one.
    std::string path;
    std::string icon;
    ApplicationKind kind = ApplicationKind::other;
    /// Whether people see it among their applications.
    bool isRegular = false;
    std::vector<std::uint32_t> windows;  ///< oldest first

    [[nodiscard]] bool owns(std::uint32_t window) const;
};

/// Groups windows by installed application, else by class, program or process; the groups stand in
/// the order of their oldest windows.
std::vector<ApplicationGroup> groupWindows(const std::vector<ClientWindow>& oldestFirst,
                                           const ApplicationIndex& index,
                                           const ApplicationTable& table);

/// The name of a process's program: the script's name where an interpreter runs one. Empty for a
/// process that is gone or not ours to look at.
std::string programName(ProcessId process);
/// The file of a process's program; empty when it cannot be read.
std::string programPath(ProcessId process);

}  // namespace orvel::x11
