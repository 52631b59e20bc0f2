#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvel::x11 {

/// What the places where a desktop may keep its looks say; absent where one says nothing.
struct AppearanceWishes {
    /// Of the portal: 1 dark, 2 light, 0 no preference.
    std::optional<unsigned> colorScheme{};
    std::optional<bool> portalAnimates{};
    /// Of a settings daemon.
    std::optional<std::string> themeName{};
    std::optional<bool> daemonAnimates{};
    /// Of the user's settings file of GTK, for desktops that have neither.
    std::optional<std::string> fileThemeName{};
    std::optional<bool> filePrefersDark{};

    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool prefersReducedMotion() const;
};

/// Adds what a `settings.ini` of GTK says.
void readGtkSettings(std::string_view text, AppearanceWishes& wishes);

}  // namespace orvel::x11
