#pragma once

#include "platform/file_system.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

/// Files that this system wrote, the folder of applications and the Dock's preferences.
class MemoryFileSystem final : public FileSystem {
public:
    MemoryFileSystem(World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] std::string homeDirectory() const override { return kHomeDirectory; }
    [[nodiscard]] std::string cachesDirectory() const override { return kCachesDirectory; }
    [[nodiscard]] Result<std::vector<std::string>> list(std::string_view path) const override;
    [[nodiscard]] bool exists(std::string_view path) const override;
    [[nodiscard]] Result<std::vector<std::byte>> read(std::string_view path) const override;
    [[nodiscard]] Result<Json> readPropertyList(std::string_view path) const override;
    Result<> writeAtomically(std::string_view path, std::span<const std::byte> bytes) override;
    Result<> remove(std::string_view path) override;
    Result<> createFolder(std::string_view path) override;

private:
    World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
