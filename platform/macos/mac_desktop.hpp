#pragma once

#include "platform/desktop.hpp"
#include "platform/macos/mac_panels.hpp"

#include <memory>

namespace orvel::macos {

struct DesktopOptions {
    bool keepsTrace = false;  ///< the user asked for the debug trace file
};

/// The desktop of a macOS login session. Main thread; the shared NSApplication exists before it.
class MacDesktop {
public:
    virtual ~MacDesktop() = default;

    /// Everything of this desktop as the system sees it; lives as long as the desktop.
    [[nodiscard]] virtual Desktop& ports() = 0;
};

/// `contents` fill the panels and outlive the desktop.
std::unique_ptr<MacDesktop> makeDesktop(PanelContents& contents, const DesktopOptions& options);

}  // namespace orvel::macos
