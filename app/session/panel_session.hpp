#pragma once

#include "app/session/signal_pipe.hpp"
#include "platform/qt/qt_run_loop.hpp"
#include "platform/x11/x11_shell.hpp"
#include "settings_ui/view/settings_content.hpp"

#include <csignal>
#include <memory>

namespace orvel {
class Application;
}

namespace orvel::session {

/// What asks a resident to open its panel. It would end a process that does not expect it.
inline constexpr int kPanelSignal = SIGUSR1;

/// The settings panel in this session: its view, and requests of other processes to open it.
class PanelSession {
public:
    /// `requests`: of `kPanelSignal`.
    PanelSession(qt::QtRunLoop& runLoop, x11::X11Shell& shell, Application& application,
                 const SignalPipe& requests);

private:
    settings_view::SettingsContent content_;
    std::unique_ptr<qt::ReadableWatch> requests_;
};

/// Has the resident of this session open its panel; false when that process is gone.
bool requestPanel(int process);

}  // namespace orvel::session
