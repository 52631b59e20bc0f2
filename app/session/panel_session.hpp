#pragma once

#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/x11_shell.hpp"
#include "settings_ui/view/settings_content.hpp"

#include <memory>

namespace orvel {
class Application;
}

namespace orvel::session {

/// The settings panel in this session: its view, and requests of other processes to open it.
class PanelSession {
public:
    PanelSession(qt::QtRunLoop& runLoop, x11::X11Shell& shell, Application& application);
    ~PanelSession();
    PanelSession(const PanelSession&) = delete;
    PanelSession& operator=(const PanelSession&) = delete;

private:
    settings_view::SettingsContent content_;
    std::unique_ptr<qt::ReadableWatch> requests_;
};

/// From now on a request waits for the panel of this process. Called before anybody can find this
/// process, since a request would end it otherwise.
void keepPanelRequests();

/// Has the resident of this session open its panel; false when that process is gone.
bool requestPanel(int process);

}  // namespace orvel::session
