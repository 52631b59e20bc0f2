#include "app/session/panel_session.hpp"

#include "app/application.hpp"

#include <csignal>

namespace orvel::session {

PanelSession::PanelSession(qt::QtRunLoop& runLoop, x11::X11Shell& shell, Application& application,
                           const SignalPipe& requests)
    : content_(shell.panels(), application.settings(), application.onboarding(),
               application.engine().isPaused(),
               [&panel = application.settingsPanel()] { panel.hide(); }),
      requests_(requests.watch(runLoop, [&panel = application.settingsPanel()] { panel.show(); })) {
}

bool requestPanel(int process) { return process > 0 && ::kill(process, kPanelSignal) == 0; }

}  // namespace orvel::session
