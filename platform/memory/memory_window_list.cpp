#include "platform/memory/memory_window_list.hpp"

namespace orvel::memory {

std::vector<WindowInfo> MemoryWindowList::windows(WindowListScope scope) const {
    std::vector<WindowInfo> found;
    for (const WorldWindow& window : world_.windows) {
        if (scope == WindowListScope::all || window.isOnScreen) found.push_back(window.info);
    }
    return found;
}

}  // namespace orvel::memory
