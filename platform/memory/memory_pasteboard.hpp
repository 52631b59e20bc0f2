#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/pasteboard.hpp"

namespace orvel::memory {

/// Pictures have a size and no pixels; their files hold a stand-in that tells the size.
class MemoryPasteboard final : public Pasteboard {
public:
    MemoryPasteboard(World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] std::int64_t changeCount() const override;
    [[nodiscard]] PasteboardMarks marks() const override;
    [[nodiscard]] std::optional<std::string> string() const override;
    [[nodiscard]] std::optional<PasteboardImage> image() const override;
    void clear() override;
    void setString(std::string_view text) override;
    Result<> writeImage(std::string_view path) override;

private:
    World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
