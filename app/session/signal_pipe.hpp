#pragma once

#include "platform/qt/qt_run_loop.hpp"

#include <array>
#include <initializer_list>
#include <memory>
#include <vector>

namespace orvel::session {

/// Brings signals of this process to a run loop: whichever comes waits in a pipe, since a handler
/// may do next to nothing. One object for each signal at a time.
class SignalPipe {
public:
    /// From now on these signals wait here.
    explicit SignalPipe(std::initializer_list<int> signals);
    /// From then on they are ignored.
    ~SignalPipe();
    SignalPipe(const SignalPipe&) = delete;
    SignalPipe& operator=(const SignalPipe&) = delete;

    /// Has `told` called on the run loop when signals have come, also before; many at once may be
    /// told as one.
    [[nodiscard]] std::unique_ptr<qt::ReadableWatch> watch(qt::QtRunLoop& runLoop, Task told) const;

private:
    std::vector<int> signals_;
    std::array<int, 2> ends_{-1, -1};
};

}  // namespace orvel::session
