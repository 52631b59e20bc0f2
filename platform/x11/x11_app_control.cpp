#include "platform/x11/x11_app_control.hpp"

#include <unistd.h>

namespace orvel::x11 {

ProcessId X11AppControl::ownPid() const { return ::getpid(); }

std::vector<ProcessId> X11AppControl::runningInstances() const { return {ownPid()}; }

}  // namespace orvel::x11
