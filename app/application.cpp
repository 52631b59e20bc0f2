#include "app/application.hpp"

namespace orvel {

namespace {

OrvelEngine::Ports enginePorts(Desktop& desktop) {
    return {.permission = desktop.accessibilityPermission,
            .windows = desktop.accessibilityWindows,
            .appControl = desktop.appControl,
            .capsLock = desktop.capsLock,
            .eventPoster = desktop.eventPoster,
            .eventTap = desktop.eventTap,
            .fileSystem = desktop.fileSystem,
            .haptics = desktop.haptics,
            .inputSources = desktop.inputSources,
            .inputState = desktop.inputState,
            .launcher = desktop.launcher,
            .log = desktop.log,
            .runLoop = desktop.runLoop,
            .screens = desktop.screens,
            .scriptRunner = desktop.scriptRunner,
            .taskRunner = desktop.taskRunner,
            .workspace = desktop.workspace};
}

}  // namespace

Application::Application(Desktop& desktop)
    : preferences_(desktop.preferenceStore),
      engine_(enginePorts(desktop),
              {.overlay = overlay_, .clipboard = clipboard_, .finderMenu = finderMenu_},
              preferences_) {}

}  // namespace orvel
