#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"
#include "platform/window_images.hpp"

namespace orvel::memory {

/// Pictures that know their size and a serial number.
class MemoryWindowImages final : public WindowImages {
public:
    MemoryWindowImages(World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    [[nodiscard]] bool hasPermission() const override { return world_.canRecordScreen; }
    void requestPermission() override;
    [[nodiscard]] std::optional<Picture> capture(WindowNumber number) override;

private:
    World& world_;
    EffectLog& effects_;
    std::int64_t lastSerial_ = 0;
};

}  // namespace orvel::memory
