#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// A folder of the file manager, ready for a breadcrumb.
struct FinderFolder {
    std::vector<std::string> labels;  ///< the root's label, then the names of the folders
    std::string path;
};

/// Reads the folder out of a script's output: a `file://` URL, anything else is the root.
FinderFolder finderFolder(std::string_view scriptOutput);

}  // namespace orvel
