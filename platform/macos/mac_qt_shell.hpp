#pragma once

#include "platform/qt/panel_content.hpp"

#include <memory>

namespace orvel::macos {

class PanelContents;

/// Qt inside an application of macOS: the system's run loop carries Qt's events, and Qt's windows
/// are views of native panels. Made before the desktop. Main thread.
class MacQtShell {
public:
    MacQtShell();
    ~MacQtShell();
    MacQtShell(const MacQtShell&) = delete;
    MacQtShell& operator=(const MacQtShell&) = delete;

    /// What native panels are filled with.
    [[nodiscard]] PanelContents& panelContents();
    /// Where views are handed over.
    [[nodiscard]] qt::PanelContentHost& contentHost();

    /// Runs the application until it ends; the system usually ends the process from inside.
    int run();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orvel::macos
