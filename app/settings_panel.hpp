#pragma once

#include "platform/event_monitors.hpp"
#include "platform/panels.hpp"
#include "platform/run_loop.hpp"

#include <memory>
#include <optional>

namespace orvel {

class AppControl;
class Screens;
class StatusBar;

inline constexpr Size kSettingsPanelSize{350, 550};

/// Where the settings panel stands below a status button; `visibleFrame` is that of the button's
/// screen.
ScreenRect settingsPanelFrame(ScreenRect button, const std::optional<ScreenRect>& visibleFrame);

/// What the settings panel needs of the desktop.
struct SettingsPanelPorts {
    Panels& panels;
    StatusBar& statusBar;
    Screens& screens;
    EventMonitors& eventMonitors;
    AppControl& appControl;
    RunLoop& runLoop;
};

/// The window that shows the settings: made on first use and kept, closed by any press outside.
class SettingsPanel {
public:
    explicit SettingsPanel(SettingsPanelPorts ports);

    [[nodiscard]] bool isVisible() const;
    /// Shows the hidden panel below the status item, hides the shown one.
    void toggle();
    /// Shows the panel, or brings the shown one to the front.
    void show();
    void hide();
    /// Whether a press outside closed the panel a moment ago.
    [[nodiscard]] bool wasJustClosedByPress() const;

private:
    void createOnce();
    void placeBelowStatusItem();
    [[nodiscard]] std::optional<ScreenRect> visibleFrameAround(ScreenPoint point) const;
    void installClickMonitors();
    void removeClickMonitors();
    void closeByPress();

    SettingsPanelPorts ports_;
    std::unique_ptr<Panel> mainWindow_;
    std::unique_ptr<EventMonitor> globalClickMonitor_;
    std::unique_ptr<EventMonitor> localClickMonitor_;
    std::optional<Instant> closedByPressAt_;
};

}  // namespace orvel
