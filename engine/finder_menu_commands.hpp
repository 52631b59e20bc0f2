#pragma once

#include "platform/base/geometry.hpp"

#include <string>
#include <vector>

namespace orvel {

/// What the engine asks of the Finder menu. Main thread.
class FinderMenuCommands {
public:
    virtual ~FinderMenuCommands() = default;

    /// Opens the menu with its top left corner at `point`. `paths` are the labels of the folders
    /// above and of `fullPath` itself, the root first.
    virtual void showMenu(ScreenPoint point, const std::vector<std::string>& paths,
                          const std::string& fullPath) = 0;
};

}  // namespace orvel
