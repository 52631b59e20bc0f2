#pragma once

#include "app/resident_services.hpp"

namespace orvel {

class AppControl;
class DockRestorer;
class Log;
class OrvelEngine;
class Preferences;
class RunLoop;
class SingleInstance;
class StatusItemController;

/// What the delegate sets going and takes down.
struct AppDelegateParts {
    OrvelEngine& engine;
    ResidentServices services;
    SingleInstance& singleInstance;
    DockRestorer& dockRestorer;
    StatusItemController& statusItem;
};

/// The program's start and end, each in its fixed order.
class AppDelegate {
public:
    AppDelegate(AppDelegateParts parts, Preferences& preferences, AppControl& appControl,
                RunLoop& runLoop, Log& log);

    void applicationDidFinishLaunching();
    /// Starts everything, once.
    void activateMainApp();
    /// Gives back what this copy changed on the desktop.
    void applicationWillTerminate();

private:
    void startEngine();
    void enableEngineByCards();
    void showTaskbarWhenEnabled();

    AppDelegateParts parts_;
    Preferences& preferences_;
    AppControl& appControl_;
    RunLoop& runLoop_;
    Log& log_;
    bool isActivated_ = false;
};

}  // namespace orvel
