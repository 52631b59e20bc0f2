#pragma once

#include <optional>
#include <string>

namespace orvel::x11 {

/// An object that an application shows on the accessibility bus.
struct AccessibleId {
    std::string name;  ///< the application's connection
    std::string path;
    bool operator==(const AccessibleId&) const = default;
};

/// What a search for the focus came to.
struct FocusSearch {
    std::optional<AccessibleId> focused;
    /// Every object was asked, or the one with the focus was found.
    bool isComplete = false;
};

}  // namespace orvel::x11
