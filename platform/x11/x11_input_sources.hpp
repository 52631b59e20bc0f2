#pragma once

#include "platform/input_sources.hpp"
#include "platform/x11/input_methods.hpp"
#include "platform/x11/service_check.hpp"
#include "platform/x11/service_connection.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvel::x11 {

/// What an input method daemon switches between where one runs and offers a choice; else the
/// layouts of the keyboard, which are groups of its keymap. A read answers from what was told last
/// and a selection waits for nobody, since both happen while a key is decided.
class X11InputSources final : public InputSources {
public:
    X11InputSources(ServiceConnection& server, InputMethods& methods);

    [[nodiscard]] std::optional<InputSource> current() const override;
    [[nodiscard]] std::vector<InputSource> selectable() const override;
    void select(std::string_view id) override;
    /// `told` is called while an engine of an input method is selected.
    void onEngineSelected(std::function<void()> told) { engineSelected_ = std::move(told); }

    [[nodiscard]] ServiceCheck check() const;

private:
    void watch(std::uint8_t firstEvent);
    void readKeymap();
    void readGroup();
    [[nodiscard]] std::vector<std::string> layoutIds(std::size_t count);

    ServiceConnection& server_;
    InputMethods& methods_;
    std::function<void()> engineSelected_;
    bool hasKeyboardExtension_ = false;
    std::vector<InputSource> groups_;
    std::size_t group_ = 0;
    std::vector<Subscription> subscriptions_;
};

/// Identifiers of layouts from the texts of the keymap's rules: "us,de" and ",nodeadkeys" give
/// "xkb:us" and "xkb:de:nodeadkeys".
std::vector<std::string> layoutIdsFrom(const std::string& layouts, const std::string& variants);

}  // namespace orvel::x11
