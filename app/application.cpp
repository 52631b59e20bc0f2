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

SettingsPanelPorts settingsPanelPorts(Desktop& desktop) {
    return {.panels = desktop.panels,
            .statusBar = desktop.statusBar,
            .screens = desktop.screens,
            .eventMonitors = desktop.eventMonitors,
            .appControl = desktop.appControl,
            .runLoop = desktop.runLoop};
}

StatusItemPorts statusItemPorts(Desktop& desktop) {
    return {.statusBar = desktop.statusBar,
            .nativeMenus = desktop.nativeMenus,
            .launcher = desktop.launcher,
            .appControl = desktop.appControl};
}

}  // namespace

Application::Application(Desktop& desktop)
    : preferences_(desktop.preferenceStore),
      engine_(enginePorts(desktop),
              {.overlay = overlay_, .clipboard = clipboard_, .finderMenu = finderMenu_},
              preferences_),
      settings_(preferences_, engine_, overlay_),
      onboarding_(desktop.essentials, desktop.launcher, desktop.runLoop, engine_),
      loginItem_(desktop.loginItems, preferences_, desktop.log),
      settingsPanel_(settingsPanelPorts(desktop)),
      statusItem_(statusItemPorts(desktop), settingsPanel_, loginItem_, engine_.isPaused()),
      singleInstance_(desktop.appControl, desktop.workspace, desktop.log),
      dockRestorer_(desktop.scriptRunner, desktop.runLoop, desktop.log),
      delegate_({.engine = engine_,
                 .services = {.overlay = overlay_,
                              .clipboard = clipboard_,
                              .windowPictures = windowPictures_},
                 .singleInstance = singleInstance_,
                 .dockRestorer = dockRestorer_,
                 .statusItem = statusItem_},
                preferences_, desktop.appControl, desktop.runLoop, desktop.log) {}

}  // namespace orvel
