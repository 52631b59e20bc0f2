#pragma once

#include "platform/file_system.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orvel {

/// The identifiers of the Dock's permanent entries in its order; an entry that is no application
/// keeps its place without one. Empty when the Dock's settings cannot be read.
std::vector<std::optional<std::string>> dockApplications(const FileSystem& files);

/// The entry at `index`, absent when there is none or it is no application.
std::optional<std::string> dockApplication(const FileSystem& files, std::size_t index);

}  // namespace orvel
