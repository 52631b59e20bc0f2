#pragma once

#include "platform/file_system.hpp"

namespace orvel::x11 {

/// The files of the disk, the caches folder by the XDG rules.
class X11FileSystem final : public FileSystem {
public:
    X11FileSystem();

    [[nodiscard]] std::string homeDirectory() const override { return home_; }
    [[nodiscard]] std::string cachesDirectory() const override { return caches_; }
    [[nodiscard]] Result<std::vector<std::string>> list(std::string_view path) const override;
    [[nodiscard]] bool exists(std::string_view path) const override;
    [[nodiscard]] Result<std::vector<std::byte>> read(std::string_view path) const override;
    [[nodiscard]] Result<Json> readPropertyList(std::string_view path) const override;
    Result<> writeAtomically(std::string_view path, std::span<const std::byte> bytes) override;
    /// A folder goes with what is in it; of a link, the link.
    Result<> remove(std::string_view path) override;
    Result<> createFolder(std::string_view path) override;

private:
    std::string home_;
    std::string caches_;
};

}  // namespace orvel::x11
