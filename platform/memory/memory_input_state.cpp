#include "platform/memory/memory_input_state.hpp"

#include <algorithm>

namespace orvel::memory {

bool MemoryInputState::isKeyDown(KeyCode keyCode) const {
    return std::find(world_.keysDown.begin(), world_.keysDown.end(), keyCode) !=
           world_.keysDown.end();
}

}  // namespace orvel::memory
