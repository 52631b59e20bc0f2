#pragma once

namespace orvel {

class Log;
class RunLoop;
class ScriptRunner;

/// Gives the desktop's own Dock back after the taskbar hid it.
class DockRestorer {
public:
    DockRestorer(ScriptRunner& scripts, RunLoop& runLoop, Log& log);

    /// Shows a Dock that an earlier run may have left hidden. Returns at once.
    void repairAtStart();
    /// Shows the Dock again and waits until it is done.
    void restoreAtExit();

private:
    ScriptRunner& scripts_;
    RunLoop& runLoop_;
    Log& log_;
};

}  // namespace orvel
