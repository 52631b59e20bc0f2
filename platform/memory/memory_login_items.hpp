#pragma once

#include "platform/login_items.hpp"
#include "platform/memory/effect_log.hpp"
#include "platform/memory/world.hpp"

namespace orvel::memory {

class MemoryLoginItems final : public LoginItems {
public:
    MemoryLoginItems(const World& world, EffectLog& effects) : world_(world), effects_(effects) {}

    Result<> registerProgram() override { return attempt("register"); }
    Result<> unregisterProgram() override { return attempt("unregister"); }

private:
    Result<> attempt(std::string_view change);

    const World& world_;
    EffectLog& effects_;
};

}  // namespace orvel::memory
