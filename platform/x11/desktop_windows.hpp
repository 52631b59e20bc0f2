#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/client_windows.hpp"
#include "platform/x11/main_thread.hpp"
#include "platform/x11/window_manager.hpp"

#include <optional>
#include <string>

namespace orvel::x11 {

/// The window in which the file manager shows a folder.
struct FileManagerWindow {
    ProcessId process = 0;
    std::string title;
    std::string application;  ///< its desktop file; empty without one
};

/// What scripts ask of the windows of the session. Any thread.
class DesktopWindows {
public:
    DesktopWindows(RunLoop& runLoop, WindowManager& manager, const ClientWindows& clients)
        : mainThread_(runLoop), manager_(manager), clients_(clients) {}

    /// Shows the desktop, or the windows again when it is shown.
    Result<> toggleShowDesktop();
    /// Nothing happens when the application has no window of that title.
    Result<> raise(ProcessId handle, const std::string& title);
    /// Brings the running application of that desktop-file id to the front; false when it has no
    /// window.
    [[nodiscard]] Result<bool> activateApplication(const std::string& desktopFileId);
    /// The frontmost window of a file manager; absent when none is open.
    [[nodiscard]] Result<std::optional<FileManagerWindow>> frontFileManagerWindow();

private:
    MainThread mainThread_;
    WindowManager& manager_;
    const ClientWindows& clients_;
};

}  // namespace orvel::x11
