#include "platform/memory/memory_accessibility_permission.hpp"

namespace orvel::memory {

bool MemoryAccessibilityPermission::isTrustedOrPrompt() {
    if (!isTrusted()) effects_.effect("permission")->value("accessibilityPrompt");
    return isTrusted();
}

}  // namespace orvel::memory
