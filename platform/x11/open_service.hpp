#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/application_launcher.hpp"
#include "platform/x11/application_table.hpp"
#include "platform/x11/desktop_entries.hpp"
#include "platform/x11/desktop_windows.hpp"
#include "platform/x11/file_manager_service.hpp"
#include "platform/x11/open_command.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvel::x11 {

/// Opens applications, files and addresses as `open` of macOS does: an application that runs comes
/// to the front instead of starting once more. Not on the main thread.
class OpenService {
public:
    OpenService(DesktopWindows& windows, const DesktopEntries& entries,
                const ApplicationTable& table, const ApplicationLauncher& launcher,
                const FileManagerService& fileManager)
        : windows_(windows),
          entries_(entries),
          table_(table),
          launcher_(launcher),
          fileManager_(fileManager) {}

    /// `path`: a desktop file, an application of the applications folder, or a program.
    Result<> openApplication(const std::string& path, const std::vector<std::string>& items,
                             bool activates) const;
    /// By a name of macOS or of this desktop.
    Result<> openNamed(const std::string& name, const std::vector<std::string>& items) const;
    /// A path or an address, with the application that the desktop has for it.
    Result<> openItem(const std::string& item) const;
    Result<> reveal(const std::string& folder) const;
    Result<> run(const OpenCommand& command) const;

private:
    Result<> openEntry(const DesktopEntry& entry, const std::vector<std::string>& items,
                       bool activates) const;
    [[nodiscard]] std::string preferredFileManager() const;

    DesktopWindows& windows_;
    const DesktopEntries& entries_;
    const ApplicationTable& table_;
    const ApplicationLauncher& launcher_;
    const FileManagerService& fileManager_;
};

}  // namespace orvel::x11
