#pragma once

#include <cstddef>

namespace orvel {

/// How often this program asked for memory so far. Linking the allocator replaces the global one.
std::size_t allocationCount();

}  // namespace orvel
