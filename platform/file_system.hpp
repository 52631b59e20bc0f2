#pragma once

#include "platform/base/json.hpp"
#include "platform/base/result.hpp"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvel {

/// Files of the user. Paths are absolute, UTF-8. Any thread.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    [[nodiscard]] virtual std::string homeDirectory() const = 0;
    [[nodiscard]] virtual std::string cachesDirectory() const = 0;
    /// Names of the entries, in the directory's order; fails when it cannot be read.
    [[nodiscard]] virtual Result<std::vector<std::string>> list(std::string_view path) const = 0;
    [[nodiscard]] virtual bool exists(std::string_view path) const = 0;
    [[nodiscard]] virtual Result<std::vector<std::byte>> read(std::string_view path) const = 0;
    /// A property list, binary or XML, as JSON values; data becomes base64 text.
    [[nodiscard]] virtual Result<Json> readPropertyList(std::string_view path) const = 0;
    /// Replaces the file as a whole or leaves it as it was. The file is the user's alone.
    virtual Result<> writeAtomically(std::string_view path, std::span<const std::byte> bytes) = 0;
    virtual Result<> remove(std::string_view path) = 0;
    /// With the folders above it. The folder is the user's alone when it is made.
    virtual Result<> createFolder(std::string_view path) = 0;
};

}  // namespace orvel
