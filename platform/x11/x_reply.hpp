#pragma once

#include <cstdlib>
#include <memory>

namespace orvel::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error of the X server, which the library leaves to whoever asked.
template <typename T>
using Reply = std::unique_ptr<T, FreeDeleter>;

}  // namespace orvel::x11
