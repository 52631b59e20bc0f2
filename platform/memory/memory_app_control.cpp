#include "platform/memory/memory_app_control.hpp"

namespace orvel::memory {

std::vector<ProcessId> MemoryAppControl::runningInstances() const {
    std::vector<ProcessId> instances = world_.otherInstances;
    instances.push_back(kOwnPid);
    return instances;
}

}  // namespace orvel::memory
