#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/accessible_focus.hpp"
#include "platform/x11/application_launcher.hpp"
#include "platform/x11/application_table.hpp"
#include "platform/x11/desktop_entries.hpp"
#include "platform/x11/desktop_windows.hpp"

#include <string>

namespace orvel::x11 {

/// What scripts ask of the file manager. Not on the main thread: folders are searched and
/// programs are started.
class FileManagerService {
public:
    FileManagerService(DesktopWindows& windows, const DesktopEntries& entries,
                       const ApplicationTable& table, const ApplicationLauncher& launcher,
                       AccessibleFocus& focus)
        : windows_(windows), entries_(entries), table_(table), launcher_(launcher), focus_(focus) {}

    /// Address of the folder in its front window, of the desktop folder when no window is open.
    [[nodiscard]] Result<std::string> frontFolder() const;
    /// Has the front window show the folder: through its address field where it shows one to
    /// assistive programs, else as its file manager opens folders, which may be another window.
    /// Fails when no window is open.
    Result<> setFrontFolder(const std::string& path) const;
    /// Opens a window that shows the folder.
    Result<> showFolder(const std::string& path) const;
    /// The name of the file manager; fails when none is installed.
    [[nodiscard]] Result<std::string> version() const;

private:
    [[nodiscard]] Result<DesktopEntry> application() const;

    DesktopWindows& windows_;
    const DesktopEntries& entries_;
    const ApplicationTable& table_;
    const ApplicationLauncher& launcher_;
    AccessibleFocus& focus_;
};

}  // namespace orvel::x11
