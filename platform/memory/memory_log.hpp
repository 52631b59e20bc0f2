#pragma once

#include "platform/log.hpp"
#include "platform/memory/effect_log.hpp"

namespace orvel::memory {

class MemoryLog final : public Log {
public:
    explicit MemoryLog(EffectLog& effects) : effects_(effects) {}

    void line(std::string_view text) override { effects_.effect("log")->value(text); }
    [[nodiscard]] bool isTracing() const override { return false; }
    void trace(std::string_view) override {}

private:
    EffectLog& effects_;
};

}  // namespace orvel::memory
