#pragma once

#include "platform/memory/effect_log.hpp"
#include "platform/native_menu.hpp"

namespace orvel::memory {

/// A menu returns at once and stays up until something is chosen or it is dismissed from outside.
class MemoryNativeMenus final : public NativeMenus {
public:
    explicit MemoryNativeMenus(EffectLog& effects) : effects_(effects) {}

    void popUp(NativeMenu menu, MenuPlace place, std::function<void(std::size_t)> chosen) override;

    [[nodiscard]] bool isUp() const { return chosen_ != nullptr; }
    /// Picks the first item of that title in the menu that popped up last; false when there is
    /// none. The menu goes away when an item was picked.
    bool choose(std::string_view title);
    void dismiss() { chosen_ = nullptr; }

private:
    EffectLog& effects_;
    std::vector<MenuItem> items_;
    std::function<void(std::size_t)> chosen_;
};

}  // namespace orvel::memory
