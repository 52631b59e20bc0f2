#pragma once

#include "app/session/signal_pipe.hpp"
#include "platform/qt/qt_run_loop.hpp"

#include <memory>

namespace orvel::session {

/// Turns the signals that ask a process to end into a task on the run loop, and lets those pass
/// that a resident process must survive: a closed output, a stop key of its terminal. Programs
/// started from here have the usual handling again.
class TerminationSignals {
public:
    TerminationSignals(qt::QtRunLoop& runLoop, Task asked);

private:
    SignalPipe requests_;
    std::unique_ptr<qt::ReadableWatch> watch_;
};

}  // namespace orvel::session
