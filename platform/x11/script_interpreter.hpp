#pragma once

#include "platform/base/result.hpp"
#include "platform/x11/desktop_windows.hpp"
#include "platform/x11/dock_service.hpp"
#include "platform/x11/file_manager_service.hpp"
#include "platform/x11/power_service.hpp"
#include "platform/x11/script_text.hpp"

#include <functional>
#include <string>

namespace orvel::x11 {

/// Whoever carries out what scripts ask for.
struct SessionActors {
    const PowerService& power;
    DockService& dock;
    DesktopWindows& windows;
    const FileManagerService& fileManager;
    std::function<Result<>()> showForceQuitDialog;
};

/// Carries out what a script asks of the session. The result is the script's own as text; the
/// failure names the application that was told.
Result<std::string> perform(const ScriptAction& action, const SessionActors& actors);

}  // namespace orvel::x11
