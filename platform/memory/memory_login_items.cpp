#include "platform/memory/memory_login_items.hpp"

namespace orvel::memory {

Result<> MemoryLoginItems::attempt(std::string_view change) {
    effects_.effect("loginItem")->value(change);
    if (world_.loginItemError) return Failure{*world_.loginItemError};
    return {};
}

}  // namespace orvel::memory
