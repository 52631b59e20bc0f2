#pragma once

#include "tools/rig/child_process.hpp"
#include "tools/rig/x_connection.hpp"

#include <memory>
#include <string>
#include <vector>

namespace orvel::rig {

/// A window manager of the distribution with its own default settings.
class WindowManager {
public:
    enum class Kind { openbox, xfwm4 };

    /// Returns when the window manager manages windows.
    WindowManager(Kind kind, const Environment& environment, XConnection& x);

    /// Another one takes over, as `--replace` has it. Returns when it manages windows.
    void replaceBy(Kind kind);
    ChildProcess& process() { return *process_; }
    /// Starts again after its process was ended.
    void restart(Kind kind) { start(kind, {}); }

private:
    /// Returns when it manages windows.
    void start(Kind kind, const std::vector<std::string>& options);

    Environment environment_;
    XConnection& x_;
    std::unique_ptr<ChildProcess> process_;
};

}  // namespace orvel::rig
