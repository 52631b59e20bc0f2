#pragma once

namespace orvel {

class AppControl;
class Log;
class Workspace;

/// Keeps a second copy of this program from running beside the first.
class SingleInstance {
public:
    SingleInstance(AppControl& appControl, Workspace& workspace, Log& log);

    /// When another copy runs: brings it to the front, asks for this one's end and returns true.
    [[nodiscard]] bool yieldsToRunningCopy();

private:
    AppControl& appControl_;
    Workspace& workspace_;
    Log& log_;
};

}  // namespace orvel
