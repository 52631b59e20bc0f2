#pragma once

#include "platform/base/result.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// Told on the main thread how an opening ended.
using OpenCompletion = std::function<void(const Result<>&)>;

/// Opens applications, files and addresses. Returns at once; any thread.
class Launcher {
public:
    virtual ~Launcher() = default;

    /// `activates` absent: the desktop's default. A failure ends silently.
    virtual void openApplication(std::string_view path, std::optional<bool> activates) = 0;
    virtual void openApplicationNamed(std::string_view name) = 0;
    /// Opens files with the application at `applicationPath`.
    virtual void openFiles(const std::vector<std::string>& paths, std::string_view applicationPath,
                           bool activates, OpenCompletion completion) = 0;
    virtual void openUrl(std::string_view url) = 0;
    /// Shows the folder `root` in the file manager.
    virtual void revealInFileManager(std::string_view root) = 0;
};

}  // namespace orvel
