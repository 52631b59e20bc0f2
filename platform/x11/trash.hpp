#pragma once

#include "platform/base/result.hpp"

#include <filesystem>
#include <vector>

namespace orvel::x11 {

/// Deletes for good what lies in the user's trash, on every volume. Links are deleted, never
/// followed. The failure names the first thing that could not be deleted; the rest is gone.
Result<> emptyTrash();

/// The same for one trash folder, which holds `files` and `info`.
Result<> emptyTrashFolder(const std::filesystem::path& folder);

/// A new folder in `parent`, with a name that nothing there has: 未命名文件夹, 未命名文件夹 2, …
Result<std::filesystem::path> makeUntitledFolder(const std::filesystem::path& parent);

}  // namespace orvel::x11
