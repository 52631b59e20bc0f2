#pragma once

#include "platform/desktop.hpp"
#include "platform/macos/mac_panels.hpp"

#include <memory>

namespace orvel::macos {

struct DesktopOptions {
    bool keepsTrace = false;     ///< the user asked for the debug trace file
    bool isPowerDryRun = false;  ///< power actions are reported and not carried out
};

/// The ports that a recorder listens in on.
struct RecordedPorts {
    EventTap& eventTap;
    EventPoster& eventPoster;
    Log& log;
};

/// The desktop of a macOS login session. Main thread; the shared NSApplication exists before it.
class MacDesktop {
public:
    virtual ~MacDesktop() = default;

    /// Everything of this desktop as the system sees it; lives as long as the desktop.
    [[nodiscard]] virtual Desktop& ports() = 0;
    /// The same with these in the place of its own.
    [[nodiscard]] virtual Desktop portsWith(const RecordedPorts& recorded) = 0;
};

/// `contents` fill the panels and outlive the desktop.
std::unique_ptr<MacDesktop> makeDesktop(PanelContents& contents, const DesktopOptions& options);

}  // namespace orvel::macos
